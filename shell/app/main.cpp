#include "shell/widgets/mainwindow.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Plotwell"));
    QApplication::setOrganizationName(QStringLiteral("Plotwell"));
    plotwell::MainWindow window;
    window.show();
    return app.exec();
}
