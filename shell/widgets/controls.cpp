#include "shell/widgets/controls.h"

#include "platform/twips.h"

#include <QHBoxLayout>
#include <QMouseEvent>

namespace plotwell {

int buttonSum(Qt::MouseButtons buttons)
{
    return (buttons & Qt::LeftButton ? 1 : 0) + (buttons & Qt::RightButton ? 2 : 0)
        + (buttons & Qt::MiddleButton ? 4 : 0);
}

void ClickLabel::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_leftPressed = true;
    pressed(event->button(), twips(event->position().x()));
}

void ClickLabel::mouseReleaseEvent(QMouseEvent* event)
{
    const bool click =
        event->button() == Qt::LeftButton && m_leftPressed && rect().contains(event->position().toPoint());
    if (event->button() == Qt::LeftButton)
        m_leftPressed = false;
    released(event->button());
    if (click)
        clicked();
}

void ClickLabel::mouseMoveEvent(QMouseEvent* event)
{
    moved(buttonSum(event->buttons()), twips(event->position().x()));
}

void ClickLabel::mouseDoubleClickEvent(QMouseEvent*)
{
    doubleClicked();
}

WrapCheckBox::WrapCheckBox(const QString& caption, QWidget* parent) : QWidget(parent), m_box(new QCheckBox(this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    auto* text = new QLabel(caption, this);
    text->setWordWrap(true);
    layout->addWidget(m_box, 0, Qt::AlignTop);
    layout->addWidget(text, 1);
}

void WrapCheckBox::mousePressEvent(QMouseEvent* event)
{
    // A click on the caption toggles the box, as a click on its text would.
    if (event->button() == Qt::LeftButton)
        m_box->click();
}

QLabel* borderedLabel(QWidget* parent, const QRect& geometry, const QString& caption)
{
    auto* label = new QLabel(caption, parent);
    label->setGeometry(geometry);
    label->setFrameStyle(QFrame::Box | QFrame::Plain);
    label->setLineWidth(1);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

QLabel* groupBox(QWidget* parent, const QRect& geometry, const QString& caption)
{
    QLabel* label = borderedLabel(parent, geometry, caption);
    label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    label->lower();
    return label;
}

void setBackground(QWidget* widget, ColorRGB colour)
{
    if (widget->autoFillBackground() && widget->palette().color(QPalette::Window) == toQColor(colour))
        return;
    QPalette p = widget->palette();
    p.setColor(QPalette::Window, toQColor(colour));
    p.setColor(QPalette::Button, toQColor(colour));
    widget->setPalette(p);
    widget->setAutoFillBackground(true);
}

void setTextColour(QWidget* widget, ColorRGB colour)
{
    QPalette p = widget->palette();
    p.setColor(QPalette::WindowText, toQColor(colour));
    widget->setPalette(p);
}

} // namespace plotwell
