#include "platform/twips.h"
#include "shell/widgets/mainwindow.h"

#include <QGroupBox>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QWheelEvent>

#include <algorithm>

namespace plotwell {
namespace {

// The wheel zooms the map wherever it turns in the window; the panels do not
// scroll with it as well.
class NoWheel : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        return event->type() == QEvent::Wheel || QObject::eventFilter(watched, event);
    }
};

} // namespace

QWidget* MainWindow::buildPanels(QWidget* client)
{
    // The tool and option frames stand in an area of their own at the right:
    // where the window is too short for them, as on a small screen at a large
    // scale, they scroll rather than leave the window, every control where
    // the layout puts it in its frame.
    auto* panels = new QScrollArea(client);
    panels->setFrameShape(QFrame::NoFrame);
    panels->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    panels->setWidgetResizable(false);
    panels->viewport()->installEventFilter(new NoWheel(panels));
    auto* content = new QWidget;
    panels->setWidget(content);
    m_controls.panels = panels;
    return content;
}

void MainWindow::layOutPanels()
{
    Controls& c = m_controls;
    const int left = px(m_editor.shell.stuffLeft);
    c.frmTools->move(px(m_editor.shell.toolsLeft) - left, 0);
    c.frmStuff->move(0, px(900));
    QWidget* content = c.panels->widget();
    const QRect frames = c.frmTools->geometry() | c.frmStuff->geometry();
    content->resize(frames.right() + 1, frames.bottom() + 1);
    // The scroll bar takes the room right of the frames first, and only
    // when there is too little there moves them left.
    const QSize client = centralWidget()->size();
    const bool scrolls = client.height() < content->height();
    const int bar = scrolls ? c.panels->verticalScrollBar()->sizeHint().width() : 0;
    const int x = std::min(left, client.width() - content->width() - bar);
    c.panels->setGeometry(x, 0, std::max(0, client.width() - x), client.height());
}

void MainWindow::fitOnScreen()
{
    const QScreen* screen = this->screen();
    if (!screen)
        return;
    const QRect room = screen->availableGeometry();
    QRect outer = frameGeometry();
    // Until the window manager tells of its frame, a title bar is allowed
    // for, and the window manager places the window.
    const bool frameKnown = outer.size() != size();
    if (!frameKnown)
        outer.adjust(0, -style()->pixelMetric(QStyle::PM_TitleBarHeight), 0, 0);
    const QSize frame = outer.size() - size();
    const QSize fits = size().boundedTo(room.size() - frame).expandedTo(minimumSize());
    if (fits != size())
        resize(fits);
    const QSize whole = fits + frame;
    const QPoint at(std::clamp(outer.left(), room.left(), std::max(room.left(), room.right() + 1 - whole.width())),
                    std::clamp(outer.top(), room.top(), std::max(room.top(), room.bottom() + 1 - whole.height())));
    if (frameKnown && at != outer.topLeft())
        move(at);
}

} // namespace plotwell
