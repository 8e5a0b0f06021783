#pragma once

#include "platform/picturedialog.h"

#include <QPointer>
#include <QWidget>

namespace plotwell {

// The export dialog as a small modal QDialog: the area (the whole map fitted
// into a size, or the current view), the format and the underlay.
class QtPictureDialog : public PictureDialog {
public:
    explicit QtPictureDialog(QWidget* parent) : m_parent(parent) {}

    bool show(QSize viewSize, bool underlayShown) override;

private:
    QPointer<QWidget> m_parent;
};

} // namespace plotwell
