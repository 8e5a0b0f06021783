#include "editor/displayhandlers.h"
#include "editor/layercommands.h"
#include "editor/palettecommands.h"
#include "editor/underlaycommands.h"
#include "platform/twips.h"
#include "shell/widgets/controls.h"
#include "shell/widgets/mainwindow.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QSlider>

namespace plotwell {
namespace {

QCheckBox* checkBox(QWidget* parent, const QRect& geometry, const QString& caption, bool checked)
{
    auto* box = new QCheckBox(caption, parent);
    box->setGeometry(geometry);
    box->setChecked(checked);
    return box;
}

QSlider* slider(QWidget* parent, const QRect& geometry, int maximum, int value, const QString& tooltip)
{
    auto* s = new QSlider(Qt::Horizontal, parent);
    s->setGeometry(geometry);
    s->setRange(0, maximum);
    s->setSingleStep(1);
    s->setPageStep(5);
    s->setValue(value);
    s->setToolTip(tooltip);
    return s;
}

QLabel* plainLabel(QWidget* parent, const QRect& geometry, const QString& caption)
{
    auto* label = new QLabel(caption, parent);
    label->setGeometry(geometry);
    return label;
}

} // namespace

void MainWindow::buildOptionsFrame()
{
    m_controls.frmStuff = new QGroupBox(m_panelContent);
    m_controls.frmStuff->setGeometry(twipRect(6840, 900, 3855, 6255));
    buildPaletteBlock(m_controls.frmStuff);
    buildBackgroundGroup(m_controls.frmStuff);
    buildShowBox(m_controls.frmStuff);
    buildHeightBox(m_controls.frmStuff);
    buildReadout(m_controls.frmStuff);
}

void MainWindow::buildPaletteBlock(QWidget* frame)
{
    Controls& c = m_controls;
    groupBox(frame, twipRect(120, 240, 1695, 2355), QStringLiteral("Active Color"));
    c.lblActiveColor = borderedLabel(frame, twipRect(300, 480, 1395, 195));
    c.lblActiveColor->setToolTip(QStringLiteral("This is the active color"));
    for (int i = 0; i < kPresetCount; ++i) {
        auto* swatch = new ClickLabel(frame);
        swatch->setGeometry(twipRect(300 + 240 * (i % 6), 720 + 240 * (i / 6), 195, 195));
        swatch->setFrameStyle(QFrame::Box | QFrame::Plain);
        swatch->pressed = [this, i](Qt::MouseButton button, float) {
            handle([&] { swatchPressed(m_editor, i, buttonSum(button)); });
        };
        c.lblColor[i] = swatch;
    }
    c.lblColor[23]->setToolTip(
        QStringLiteral("Left click to select this color, right click to set this color to the current active color"));

    struct Strip {
        ColorRGB back, text;
        const char* tooltip;
    };
    const Strip strips[3] = {
        {{255, 0, 0},
         {255, 255, 0},
         "Drag left or right to change the amount of red.  Or double-click to type an exact value."},
        {{0, 255, 0}, {0, 0, 0}, "Drag left or right to change the amount of green"},
        {{0, 0, 255}, {255, 255, 0}, "Drag left or right to change the amount of blue"},
    };
    for (int i = 0; i < 3; ++i) {
        auto* strip = new ClickLabel(QStringLiteral("0"), frame);
        strip->setGeometry(twipRect(300, 1740 + 240 * i, 1395, 195));
        strip->setFrameStyle(QFrame::Box | QFrame::Plain);
        strip->setAlignment(Qt::AlignCenter);
        QFont bold = strip->font();
        bold.setBold(true);
        strip->setFont(bold);
        setBackground(strip, strips[i].back);
        setTextColour(strip, strips[i].text);
        strip->setToolTip(QString::fromLatin1(strips[i].tooltip));
        // Moves without a button count too: they give the map the focus.
        strip->setMouseTracking(true);
        strip->moved = [this, i](int buttons, float x) { handle([&] { stripMouseMove(m_editor, i, buttons, x); }); };
        strip->released = [this](Qt::MouseButton) { handle([&] { stripReleased(m_editor); }); };
        strip->doubleClicked = [this, i] { handle([&] { stripDoubleClicked(m_editor, i); }); };
        c.sldColor[i] = strip;
    }
}

void MainWindow::buildBackgroundGroup(QWidget* frame)
{
    Controls& c = m_controls;
    groupBox(frame, twipRect(1860, 240, 1875, 2175), QStringLiteral("Background Picture"));
    const char* captions[3] = {"On", "Tracing Paper", "Off"};
    const QRect places[3] = {twipRect(2160, 540, 600, 315), twipRect(2160, 900, 1275, 315),
                             twipRect(2820, 540, 600, 315)};
    for (int i = 0; i < 3; ++i) {
        c.cmdBkg[i] = new QPushButton(QString::fromLatin1(captions[i]), frame);
        c.cmdBkg[i]->setGeometry(places[i]);
        c.cmdBkg[i]->setFocusPolicy(Qt::NoFocus);
        connect(c.cmdBkg[i], &QPushButton::clicked, this,
                [this, i] { handle([&] { backgroundButtonClicked(m_editor, i); }); });
    }
    c.chkAspect = checkBox(frame, twipRect(1920, 1260, 1755, 255), QStringLiteral("Maintain Aspect"), true);
    // No handler of its own: each frame reads the box.
    connect(c.chkAspect, &QCheckBox::clicked, this,
            [this](bool on) { handle([&] { chkAspectClicked(m_editor, on); }); });

    auto* invert = new WrapCheckBox(QStringLiteral("Invert colors if needed"), frame);
    invert->setGeometry(twipRect(2040, 1560, 1455, 375));
    invert->setToolTip(QStringLiteral(
        "If a line or label has the same color as the background, the color will be shown inverted so that it "
        "will be visible.  This will not affect the color saved into the file.  Uncheck this to always show true "
        "colors."));
    c.chkInvert = invert->box();
    c.chkInvert->setChecked(true);
    connect(c.chkInvert, &QCheckBox::clicked, this,
            [this](bool checked) { handle([&] { chkInvertClicked(m_editor, checked); }); });

    plainLabel(frame, twipRect(2040, 1920, 1575, 255), QStringLiteral("Background Color:"));
    c.lblBkgColor = new ClickLabel(frame);
    c.lblBkgColor->setGeometry(twipRect(1980, 2160, 1575, 195));
    c.lblBkgColor->setFrameStyle(QFrame::Box | QFrame::Plain);
    c.lblBkgColor->clicked = [this] { handle([&] { backgroundSwatchClicked(m_editor); }); };
    c.lblBkgColor->setToolTip(
        QStringLiteral("Click to set background of the map to the active color (underlay must be off)"));
}

void MainWindow::buildShowBox(QWidget* frame)
{
    Controls& c = m_controls;
    groupBox(frame, twipRect(60, 2640, 1875, 1815), QStringLiteral("Show"));
    c.chkLabels = checkBox(frame, twipRect(120, 2880, 855, 195), QStringLiteral("Labels"), true);
    c.chkLines = checkBox(frame, twipRect(1080, 2880, 735, 195), QStringLiteral("Lines"), true);
    auto* rule = new QFrame(frame);
    rule->setFrameStyle(QFrame::HLine | QFrame::Plain);
    rule->setGeometry(px(120), px(3120), px(1800) - px(120), 1);
    c.chkFlash = checkBox(frame, twipRect(120, 3180, 1755, 195), QStringLiteral("Flash selected items"), true);
    connect(c.chkLabels, &QCheckBox::clicked, this,
            [this](bool on) { handle([&] { chkLabelsClicked(m_editor, on); }); });
    connect(c.chkLines, &QCheckBox::clicked, this, [this](bool on) { handle([&] { chkLinesClicked(m_editor, on); }); });
    connect(c.chkFlash, &QCheckBox::clicked, this, [this](bool on) { handle([&] { chkFlashClicked(m_editor, on); }); });

    // Rows from the top: Layer 3, Layer 2, Layer 1, Base Layer.
    for (int n = 0; n < kLayerCount; ++n) {
        const int top = 4140 - 240 * n;
        auto* marker = new ClickLabel(frame);
        marker->setGeometry(twipRect(120, top, 195, 195));
        marker->setToolTip(QStringLiteral("Set to active layer"));
        marker->clicked = [this, n] { handle([&] { activeMarkerClicked(m_editor, n); }); };
        c.lbActiveLayer[n] = marker;

        auto* box = checkBox(frame, twipRect(360, top, 1560, 195), defaultLayerName(n), n == 0);
        box->setToolTip(QStringLiteral("Layer Visibility"));
        connect(box, &QCheckBox::clicked, this,
                [this, n](bool on) { handle([&] { layerCheckClicked(m_editor, n, on); }); });
        c.chkLayer[n] = box;
    }
}

void MainWindow::buildHeightBox(QWidget* frame)
{
    Controls& c = m_controls;
    groupBox(frame, twipRect(1980, 2460, 1815, 1995), QStringLiteral("Height"));
    c.chkHeight = checkBox(frame, twipRect(2040, 2760, 1335, 195), QStringLiteral("Height Filter"), false);
    c.chkHeight->setToolTip(QStringLiteral("Right click to set Z axis tollerance"));
    c.chkHeight->installEventFilter(this);
    connect(c.chkHeight, &QCheckBox::clicked, this,
            [this](bool on) { handle([&] { chkHeightClicked(m_editor, on); }); });
    c.chkStereo = checkBox(frame, twipRect(2040, 2940, 1695, 255), QStringLiteral("Stereoscopic Mode"), false);
    connect(c.chkStereo, &QCheckBox::clicked, this,
            [this](bool on) { handle([&] { chkStereoClicked(m_editor, on); }); });
    plainLabel(frame, twipRect(2100, 3240, 1515, 255), QStringLiteral("Stereo Seperation:"));
    c.sldStereo = slider(frame, twipRect(2040, 3480, 1695, 195), 100, 30,
                         QStringLiteral("Overall stereo seperation regardless of Z-level"));
    c.sldStereoZ = slider(frame, twipRect(2040, 3720, 1695, 195), 100, 40,
                          QStringLiteral("Stereo seperation relative to Z-level"));
    plainLabel(frame, twipRect(2100, 3960, 1515, 255), QStringLiteral("Brightness:"));
    c.sldBrightness = slider(frame, twipRect(2040, 4200, 1695, 195), 255, 0, QStringLiteral("Brightness"));
    // The sliders have no handlers of their own: each frame reads their values.
    connect(c.sldStereo, &QSlider::valueChanged, this,
            [this](int v) { stereoSliderMoved(m_editor, StereoSlider::Separation, v); });
    connect(c.sldStereoZ, &QSlider::valueChanged, this,
            [this](int v) { stereoSliderMoved(m_editor, StereoSlider::SeparationByHeight, v); });
    connect(c.sldBrightness, &QSlider::valueChanged, this,
            [this](int v) { stereoSliderMoved(m_editor, StereoSlider::Brightness, v); });
}

void MainWindow::buildReadout(QWidget* frame)
{
    Controls& c = m_controls;
    plainLabel(frame, twipRect(180, 4500, 1095, 255), QStringLiteral("X"))->setAlignment(Qt::AlignCenter);
    plainLabel(frame, twipRect(1380, 4500, 1035, 255), QStringLiteral("Y"))->setAlignment(Qt::AlignCenter);
    plainLabel(frame, twipRect(2520, 4500, 1095, 255), QStringLiteral("Z"))->setAlignment(Qt::AlignCenter);
    const ColorRGB readoutBack{192, 255, 255};
    c.lblX = borderedLabel(frame, twipRect(180, 4680, 1095, 255), QStringLiteral("0"));
    c.lblX->setToolTip(QStringLiteral("Current X position"));
    c.lblY = borderedLabel(frame, twipRect(1350, 4680, 1095, 255), QStringLiteral("0"));
    c.lblY->setToolTip(QStringLiteral("Current Y position"));
    c.lblZ = borderedLabel(frame, twipRect(2520, 4680, 1095, 255), QStringLiteral("0"));
    c.lblZ->setToolTip(QStringLiteral("Scroll mouse wheel to change current Z position.  Hold shift to go faster"));
    for (QLabel* l : {c.lblX, c.lblY, c.lblZ})
        setBackground(l, readoutBack);
    c.lblLoc = borderedLabel(frame, twipRect(180, 5040, 3495, 255), QStringLiteral("Loc: "));
    c.lblLoc->setAutoFillBackground(true);
    c.lblLoc->setBackgroundRole(QPalette::Base);
}

} // namespace plotwell
