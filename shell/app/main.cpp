#include "editor/startup.h"
#include "shell/widgets/mainwindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>

#include <cstring>
#include <memory>

namespace {

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral("Plotwell, an editor for EverQuest map files."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("files"),
                                 QStringLiteral("Map files to open, as if dropped on the map: the first into the "
                                                "base layer, the next into Layer 1, and so on."),
                                 QStringLiteral("[FILE...]"));
}

// --help and --version answer without reaching the window system, so that
// they work without a display.
bool onlyAsksForText(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        for (const char* option : {"-h", "--help", "--help-all", "-v", "--version", "-?"})
            if (std::strcmp(argv[i], option) == 0)
                return true;
    }
    return false;
}

void setNames()
{
    QCoreApplication::setApplicationName(QStringLiteral("Plotwell"));
    QCoreApplication::setOrganizationName(QStringLiteral("Plotwell"));
    QCoreApplication::setApplicationVersion(plotwell::versionText());
}

} // namespace

int main(int argc, char** argv)
{
    QCommandLineParser parser;
    describe(parser);
    if (onlyAsksForText(argc, argv)) {
        QCoreApplication app(argc, argv);
        setNames();
        parser.process(app); // prints the text and exits
        return 0;
    }

    QApplication app(argc, argv);
    setNames();
    parser.process(app); // an unknown option prints the usage and exits with status 1
    QStringList files;
    for (const QString& file : parser.positionalArguments())
        files << QDir::toNativeSeparators(QDir::current().absoluteFilePath(file));

    plotwell::MainWindow window;
    window.show();
    if (!files.isEmpty())
        window.openFiles(files);
    return app.exec();
}
