#include "platform/widgets/qtpicturedialog.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace plotwell {
namespace {

QSpinBox* sideBox(int value, QWidget* parent)
{
    auto* box = new QSpinBox(parent);
    box->setRange(1, kMaxPictureSide);
    box->setValue(value);
    box->setAccelerated(true);
    return box;
}

} // namespace

bool QtPictureDialog::show(QSize viewSize, bool underlayShown)
{
    QDialog dialog(m_parent);
    dialog.setWindowTitle(QStringLiteral("Export Picture"));

    auto* area = new QGroupBox(QStringLiteral("Area"), &dialog);
    auto* whole = new QRadioButton(QStringLiteral("The whole map, fitted into"), area);
    auto* width = sideBox(options.size.width(), area);
    auto* height = sideBox(options.size.height(), area);
    auto* view = new QRadioButton(
        QStringLiteral("The current view (%1 \u00d7 %2 pixels)").arg(viewSize.width()).arg(viewSize.height()), area);
    auto* wholeRow = new QHBoxLayout;
    wholeRow->addWidget(whole);
    wholeRow->addWidget(width);
    wholeRow->addWidget(new QLabel(QStringLiteral("\u00d7"), area));
    wholeRow->addWidget(height);
    wholeRow->addWidget(new QLabel(QStringLiteral("pixels"), area));
    wholeRow->addStretch();
    auto* areaLayout = new QVBoxLayout(area);
    areaLayout->addLayout(wholeRow);
    areaLayout->addWidget(view);
    (options.area == PictureArea::WholeMap ? whole : view)->setChecked(true);
    const auto enableSize = [=] {
        width->setEnabled(whole->isChecked());
        height->setEnabled(whole->isChecked());
    };
    QObject::connect(whole, &QRadioButton::toggled, &dialog, enableSize);
    enableSize();

    auto* format = new QGroupBox(QStringLiteral("Format"), &dialog);
    auto* png = new QRadioButton(QStringLiteral("PNG image"), format);
    auto* svg = new QRadioButton(QStringLiteral("SVG drawing: lines and labels stay sharp at any size"), format);
    auto* formatLayout = new QVBoxLayout(format);
    formatLayout->addWidget(png);
    formatLayout->addWidget(svg);
    (options.format == PictureFormat::Png ? png : svg)->setChecked(true);

    auto* underlay = new QCheckBox(QStringLiteral("With the underlay picture"), &dialog);
    underlay->setEnabled(underlayShown);
    underlay->setChecked(underlayShown && options.underlay);
    if (!underlayShown)
        underlay->setToolTip(QStringLiteral("The map shows no underlay picture now."));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("Export..."));
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);

    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(area);
    layout->addWidget(format);
    layout->addWidget(underlay);
    layout->addWidget(buttons);

    if (dialog.exec() != QDialog::Accepted)
        return false;
    options.area = whole->isChecked() ? PictureArea::WholeMap : PictureArea::CurrentView;
    options.size = QSize(width->value(), height->value());
    options.format = png->isChecked() ? PictureFormat::Png : PictureFormat::Svg;
    // A box the map gave no choice about keeps the user's last choice.
    if (underlayShown)
        options.underlay = underlay->isChecked();
    return true;
}

} // namespace plotwell
