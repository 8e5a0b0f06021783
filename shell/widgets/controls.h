#pragma once

#include "document/colorrgb.h"

#include <QCheckBox>
#include <QLabel>

#include <functional>

namespace plotwell {

// A label that reports presses, releases, moves and double clicks with the
// mouse position in twips, as the window's strips, swatches and icons need.
class ClickLabel : public QLabel {
    Q_OBJECT
public:
    using QLabel::QLabel;

    std::function<void(Qt::MouseButton, float x)> pressed = [](Qt::MouseButton, float) {};
    std::function<void(Qt::MouseButton)> released = [](Qt::MouseButton) {};
    // A left-button click: pressed on the label and let go over it.
    std::function<void()> clicked = [] {};
    // buttons held as the sum 1 left, 2 right, 4 middle.
    std::function<void(int buttons, float x)> moved = [](int, float) {};
    std::function<void()> doubleClicked = [] {};

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    bool m_leftPressed = false;
};

// A check box whose caption wraps over several lines.
class WrapCheckBox : public QWidget {
    Q_OBJECT
public:
    WrapCheckBox(const QString& caption, QWidget* parent);
    QCheckBox* box() const { return m_box; }

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    QCheckBox* m_box;
};

// The mouse buttons of an event as the sum 1 left, 2 right, 4 middle.
int buttonSum(Qt::MouseButtons buttons);

// A label with a single border and flat look, as most of the window's labels.
QLabel* borderedLabel(QWidget* parent, const QRect& geometry, const QString& caption = QString());
// A label used as a box around a group, its caption centred at the top.
QLabel* groupBox(QWidget* parent, const QRect& geometry, const QString& caption);
void setBackground(QWidget* widget, ColorRGB colour);
void setTextColour(QWidget* widget, ColorRGB colour);

} // namespace plotwell
