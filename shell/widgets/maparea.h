#pragma once

#include <QWidget>

#include <functional>

class QImage;

namespace plotwell {

class Editor;

// The drawing surface control `map`: shows the surface's persistent image and
// hands mouse moves and dropped files to the editor.
class MapArea : public QWidget {
    Q_OBJECT
public:
    MapArea(Editor& editor, const QImage& image, QWidget* parent);

    // Called after a handler changed the editor, so the window shows it.
    std::function<void()> changed = [] {};

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    Editor& m_editor;
    const QImage& m_image;
};

} // namespace plotwell
