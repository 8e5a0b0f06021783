#include "shell/widgets/maparea.h"

#include "editor/editor.h"
#include "editor/mapevents.h"
#include "editor/maploading.h"
#include "editor/viewcommands.h"
#include "platform/twips.h"
#include "shell/widgets/controls.h"
#include "shell/widgets/keycodes.h"
#include "view/zoom.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFrame>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QUrl>

#include <cmath>
#include <vector>

namespace plotwell {
namespace {

QStringList localFiles(const QMimeData* data)
{
    QStringList files;
    if (!data || !data->hasUrls())
        return files;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile())
            files << url.toLocalFile();
    }
    return files;
}

int buttonCode(Qt::MouseButton button)
{
    switch (button) {
        case Qt::LeftButton:
            return kLeftButton;
        case Qt::RightButton:
            return kRightButton;
        case Qt::MiddleButton:
            return kMiddleButton;
        default:
            return 0;
    }
}

SurfacePoint surfacePoint(const QMouseEvent* event)
{
    return {twips(event->position().x()), twips(event->position().y())};
}

// A line control over the map: the crosshair lines are dark red, 2 pixels wide.
QFrame* overlayLine(QWidget* parent)
{
    auto* line = new QFrame(parent);
    setBackground(line, {192, 0, 0});
    line->setAttribute(Qt::WA_TransparentForMouseEvents);
    line->hide();
    return line;
}

} // namespace

MapArea::MapArea(Editor& editor, const QImage& image, QWidget* parent)
    : QWidget(parent), m_editor(editor), m_image(image), m_crossX(overlayLine(this)), m_crossY(overlayLine(this)),
      m_selectBox(new QFrame(this)), m_caption(new QLineEdit(this))
{
    setMouseTracking(true);
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);

    m_selectBox->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_selectBox->hide();
    m_caption->hide();
    m_caption->resize(px(1695), m_caption->sizeHint().height());
    m_caption->installEventFilter(this);
    // A single-line box: of a text pasted with line breaks it keeps the first line.
    connect(m_caption, &QLineEdit::textEdited, this, [this](const QString& text) {
        const QString line = LabelTool::firstLine(text);
        if (line != text)
            m_caption->setText(line);
    });
}

void MapArea::paintEvent(QPaintEvent* event)
{
    // Only the parts asked for: a flashing selection asks for its own records.
    QPainter painter(this);
    const double ratio = m_image.devicePixelRatio();
    const QRect picture(QPoint(0, 0), m_image.deviceIndependentSize().toSize());
    for (const QRect& part : event->region()) {
        if ((part & picture) != part)
            painter.fillRect(part, palette().window());
    }
    // The image has the screen's own pixels: they are copied one to one,
    // never resampled, unless the window is on its way to another screen.
    const bool oneToOne = devicePixelRatioF() == ratio;
    if (oneToOne)
        painter.setWorldTransform(QTransform::fromScale(1 / ratio, 1 / ratio));
    for (const QRect& part : event->region()) {
        const QRect inside = part & picture;
        if (inside.isEmpty())
            continue;
        const QRectF logical(inside);
        const QRectF device(logical.topLeft() * ratio, logical.size() * ratio);
        if (oneToOne) {
            const QRect pixels = device.toAlignedRect() & m_image.rect();
            painter.drawImage(QRectF(pixels), m_image, QRectF(pixels));
        } else {
            painter.drawImage(logical, m_image, device);
        }
    }
}

void MapArea::showChanged(const QRegion& devicePixels)
{
    const double ratio = m_image.devicePixelRatio();
    if (ratio == 1) {
        update(devicePixels);
        return;
    }
    // The changed parts come in rows of tiles, from the top, none
    // overlapping; at a whole ratio they stay so in logical pixels and make
    // the region at once, at another they are joined one by one.
    std::vector<QRect> logical;
    logical.reserve(std::size_t(devicePixels.rectCount()));
    for (const QRect& r : devicePixels)
        logical.push_back(QRectF(r.x() / ratio, r.y() / ratio, r.width() / ratio, r.height() / ratio).toAlignedRect());
    QRegion region;
    if (ratio == std::round(ratio)) {
        region.setRects(logical.data(), int(logical.size()));
    } else {
        for (const QRect& r : logical)
            region += r;
    }
    update(region);
}

void MapArea::mousePressEvent(QMouseEvent* event)
{
    const int button = buttonCode(event->button());
    if (button == 0)
        return;
    run([&] { mapMouseDown(m_editor, button, surfacePoint(event)); });
}

void MapArea::mouseMoveEvent(QMouseEvent* event)
{
    run([&] { mapMouseMove(m_editor, buttonSum(event->buttons()), surfacePoint(event)); });
}

void MapArea::mouseReleaseEvent(QMouseEvent* event)
{
    const int button = buttonCode(event->button());
    if (button == 0)
        return;
    run([&] { mapMouseUp(m_editor); });
    if (m_doubleClicked && button == 1) {
        m_doubleClicked = false;
        run([&] { mapDoubleClick(m_editor, button, surfacePoint(event)); });
    }
}

void MapArea::mouseDoubleClickEvent(QMouseEvent* event)
{
    // The second press of a double click is a press like any other; the
    // tool hears of the double click at its release.
    mousePressEvent(event);
    m_doubleClicked = buttonCode(event->button()) == 1;
}

void MapArea::keyPressEvent(QKeyEvent* event)
{
    const int code = editorKeyCode(*event);
    const int shift = editorShiftMask(*event);
    run([&] { mapKeyDown(m_editor, code, shift); });
}

void MapArea::keyReleaseEvent(QKeyEvent* event)
{
    // A held key repeats its press, not its release.
    if (event->isAutoRepeat())
        return;
    const int code = editorKeyCode(*event);
    const int shift = editorShiftMask(*event);
    run([&] { mapKeyUp(m_editor, code, shift); });
}

bool MapArea::focusNextPrevChild(bool)
{
    // Tab stays with the map, whose keys the editor reads.
    return false;
}

void MapArea::dragEnterEvent(QDragEnterEvent* event)
{
    if (!localFiles(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MapArea::dropEvent(QDropEvent* event)
{
    const QStringList files = localFiles(event->mimeData());
    if (files.isEmpty())
        return;
    event->acceptProposedAction();
    run([&] { dropFiles(m_editor, files); });
}

bool MapArea::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_caption || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        const QString text = m_caption->text();
        run([&] { captionEntered(m_editor, text); });
        setFocus(Qt::OtherFocusReason);
        return true;
    }
    if (key == Qt::Key_Escape) {
        run([&] { captionCancelled(m_editor); });
        setFocus(Qt::OtherFocusReason);
        return true;
    }
    return false;
}

void MapArea::syncOverlays()
{
    const CrosshairLines& cross = m_editor.tools.crosshair().lines();
    if (cross.visible) {
        // From the top (the left) edge of the map to its far side, 2 pixels wide.
        m_crossY->setGeometry(px(cross.x) - 1, 0, 2, px(m_editor.view.mapHeight));
        m_crossX->setGeometry(0, px(cross.y) - 1, px(m_editor.view.mapWidth), 2);
    }
    m_crossX->setVisible(cross.visible);
    m_crossY->setVisible(cross.visible);

    const SelectBox& box = m_editor.selection.box;
    if (box.visible) {
        m_selectBox->setGeometry(twipRect(box.left, box.top, box.width, box.height).adjusted(0, 0, 1, 1));
        const QString style =
            QStringLiteral("border: 1px solid %1; background: transparent;").arg(toQColor(box.border).name());
        if (m_selectBox->styleSheet() != style)
            m_selectBox->setStyleSheet(style);
    }
    m_selectBox->setVisible(box.visible);

    const CaptionBox& caption = m_editor.tools.label().captionBox();
    if (caption.opened != m_captionOpened) {
        // Each opening starts again from the new-label text, all of it selected.
        m_captionOpened = caption.opened;
        m_caption->move(px(caption.left), px(caption.top));
        m_caption->setText(LabelTool::newLabelText());
        m_caption->selectAll();
        m_caption->show();
        m_caption->setFocus(Qt::OtherFocusReason);
    }
    if (!caption.visible && m_caption->isVisible())
        m_caption->hide();

    const Qt::CursorShape shape =
        m_editor.tools.state.mapCursor == MapCursor::Move ? Qt::SizeAllCursor : Qt::ArrowCursor;
    if (cursor().shape() != shape)
        setCursor(shape);
}

} // namespace plotwell
