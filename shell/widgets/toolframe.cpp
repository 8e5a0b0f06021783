#include "editor/mapevents.h"
#include "editor/viewcommands.h"
#include "platform/twips.h"
#include "shell/widgets/controls.h"
#include "shell/widgets/mainwindow.h"
#include "view/zoom.h"

#include <QGroupBox>

namespace plotwell {
namespace {

struct ToolIcon {
    const char* resource;
    const char* tooltip;
};

const ToolIcon kToolIcons[kToolCount] = {
    {":/icons/pointer.xpm", "Pointer tool"},
    {":/icons/pan.xpm", "Pan tool (shortcut: right click & drag)"},
    {":/icons/select.xpm", "Select tool"},
    {":/icons/line.xpm", "Line tool"},
    {":/icons/freehand.xpm", "Freehand draw tool"},
    {":/icons/label.xpm", "Label tool"},
    {":/icons/crosshair.xpm", "Crosshair Tool (Mark a location, copy LOC to clipboard)"},
    {":/icons/move.xpm", "Move tool (drag the selected records)"},
};

} // namespace

void MainWindow::buildToolFrame()
{
    Controls& c = m_controls;
    c.frmTools = new QGroupBox(QStringLiteral("Tools"), m_panelContent);
    c.frmTools->setGeometry(twipRect(6840, 0, 3795, 915));

    for (int n = 0; n < kToolCount; ++n) {
        auto* icon = new ClickLabel(c.frmTools);
        icon->setGeometry(twipRect(120 + 300 * n, 240, 255, 240));
        icon->setPixmap(QPixmap(QString::fromLatin1(kToolIcons[n].resource)));
        icon->setAlignment(Qt::AlignCenter);
        icon->setToolTip(QString::fromLatin1(kToolIcons[n].tooltip));
        icon->clicked = [this, n] { handle([&] { toolIconClicked(m_editor, ToolId(n)); }); };
        c.imgTool[n] = icon;
    }

    auto* back =
        borderedLabel(c.frmTools, twipRect(ZoomStrip::kLeft, ZoomStrip::kTop, ZoomStrip::kWidth, ZoomStrip::kHeight));
    back->setAutoFillBackground(true);
    back->setBackgroundRole(QPalette::Base);

    c.lblScale = new ClickLabel(c.frmTools);
    c.lblScale->setGeometry(back->geometry());
    c.lblScale->setFrameStyle(QFrame::Box | QFrame::Plain);
    c.lblScale->setAlignment(Qt::AlignCenter);
    QFont bold = c.lblScale->font();
    bold.setBold(true);
    c.lblScale->setFont(bold);
    c.lblScale->setToolTip(QStringLiteral("Zoom (Click on map to set center of zoom, or use mouse scroll wheel)"));
    c.lblScale->moved = [this](int buttons, float x) {
        handle([&] { zoomStripMouseMove(m_editor.view, m_editor.doc, buttons, x); });
    };

    // The marker line lnScale, 2 pixels wide, red, across the strip.
    c.lnScale = new QFrame(c.frmTools);
    c.lnScale->setGeometry(px(180) - 1, px(600), 2, px(840) - px(600));
    setBackground(c.lnScale, kRed);
    c.lnScale->setAttribute(Qt::WA_TransparentForMouseEvents);

    c.imgAutoSize = new ClickLabel(c.frmTools);
    c.imgAutoSize->setGeometry(twipRect(3240, 180, 390, 390));
    c.imgAutoSize->setPixmap(QPixmap(QStringLiteral(":/icons/fit.xpm")));
    c.imgAutoSize->setAlignment(Qt::AlignCenter);
    c.imgAutoSize->setToolTip(QStringLiteral("Fit content to screen"));
    c.imgAutoSize->pressed = [this](Qt::MouseButton, float) {
        m_controls.imgAutoSize->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        handle([&] { fitContentToScreen(m_editor); });
    };
    c.imgAutoSize->released = [this](Qt::MouseButton) { m_controls.imgAutoSize->setFrameStyle(QFrame::NoFrame); };
}

} // namespace plotwell
