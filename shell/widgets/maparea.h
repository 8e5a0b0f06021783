#pragma once

#include <QWidget>

#include <functional>

class QFrame;
class QImage;
class QLineEdit;

namespace plotwell {

class Editor;

// The drawing surface control `map`: shows the surface's persistent image
// with the controls that lie over it (the crosshair lines, the selection
// rectangle, the caption box), and hands its mouse, key and drop events to
// the editor.
class MapArea : public QWidget {
    Q_OBJECT
public:
    MapArea(Editor& editor, const QImage& image, QWidget* parent);

    // Runs a handler of the editor; the window shows its effects after it.
    std::function<void(const std::function<void()>&)> run = [](const std::function<void()>& f) { f(); };

    // Brings the controls over the map up to date with the editor.
    void syncOverlays();
    // Shows again the parts of the surface's image that changed, in its device pixels.
    void showChanged(const QRegion& devicePixels);
    QLineEdit* captionBox() const { return m_caption; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Editor& m_editor;
    const QImage& m_image;
    QFrame* m_crossX;
    QFrame* m_crossY;
    QFrame* m_selectBox;
    QLineEdit* m_caption;
    int m_captionOpened = 0;
    bool m_doubleClicked = false; // the left button's second press, until its release
};

} // namespace plotwell
