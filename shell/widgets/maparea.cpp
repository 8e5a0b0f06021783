#include "shell/widgets/maparea.h"

#include "document/maploading.h"
#include "shell/editor.h"
#include "shell/widgets/twips.h"
#include "view/viewcontrol.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QUrl>

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

} // namespace

MapArea::MapArea(Editor& editor, const QImage& image, QWidget* parent)
    : QWidget(parent), m_editor(editor), m_image(image)
{
    setMouseTracking(true);
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void MapArea::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    painter.drawImage(0, 0, m_image);
}

void MapArea::mouseMoveEvent(QMouseEvent* event)
{
    const float x = twips(event->position().x());
    const float y = twips(event->position().y());
    showLocation(m_editor, x, y);
    m_editor.view.lastMousePoint.x = x;
    m_editor.view.lastMousePoint.y = y;
    changed();
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
    dropFiles(m_editor, files);
    changed();
}

} // namespace plotwell
