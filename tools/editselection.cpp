#include "tools/editselection.h"

#include "document/ansitext.h"
#include "document/labelcommand.h"
#include "document/movecommand.h"
#include "document/numbertext.h"
#include "tools/drawingtools.h"

#include <algorithm>
#include <iterator>

namespace plotwell {

bool moveSelection(const ToolContext& context, float dx, float dy, float dz)
{
    auto step = std::make_unique<MoveCommand>(context.doc, dx, dy, dz);
    if (!step->movesAny())
        return false;
    step->redo(context.doc, context.view.currentScale);
    context.history.push(std::move(step));
    return true;
}

std::optional<std::array<float, 3>> parseMoveDistance(const QString& typed)
{
    const QStringList parts = typed.split(QLatin1Char(','));
    if (parts.size() != 2 && parts.size() != 3)
        return std::nullopt;
    std::array<float, 3> v{};
    for (int i = 0; i < parts.size(); ++i) {
        const auto number = textToSingle(parts[i].toStdString());
        if (!number)
            return std::nullopt;
        v[std::size_t(i)] = *number;
    }
    // The read-out writes the negated world y, then the negated world x.
    return std::array<float, 3>{-v[1], -v[0], v[2]};
}

QString moveSelectionPrompt()
{
    return QStringLiteral("Move the selection by what distance? (y, x or y, x, z, as a /loc writes places)");
}

void moveSelectionFromPrompt(const ToolContext& context)
{
    if (!context.doc.hasSelection())
        return;
    const QString answer = context.dialogs.prompt(moveSelectionPrompt(), QStringLiteral("Move Selection"), QString());
    if (answer.trimmed().isEmpty())
        return;
    const auto d = parseMoveDistance(answer);
    if (!d) {
        context.dialogs.message(QStringLiteral("The distance is two or three numbers: y, x and, if wanted, z."));
        return;
    }
    if (!moveSelection(context, (*d)[0], (*d)[1], (*d)[2]) && ((*d)[0] != 0 || (*d)[1] != 0 || (*d)[2] != 0))
        context.dialogs.message(QStringLiteral("The selection cannot be moved that far."));
}

std::optional<std::size_t> soleSelectedLabel(const MapDocument& doc)
{
    if (!doc.hasSelection())
        return std::nullopt;
    std::optional<std::size_t> found;
    const auto& labels = doc.labels();
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (!labels[i].selected)
            continue;
        if (found)
            return std::nullopt;
        found = i;
    }
    return found;
}

namespace {

QString sizeName(std::int16_t size)
{
    switch (size) {
        case 0:
            return QStringLiteral("0 (smallest)");
        case 1:
            return QStringLiteral("1 (small)");
        case 2:
            return QStringLiteral("2 (medium)");
        case 3:
            return QStringLiteral("3 (large)");
        default:
            return QStringLiteral("%1 (as read)").arg(size);
    }
}

// The text a label is given, read as the Label tool reads a caption.
std::string labelTextOf(const QString& typed)
{
    QString text = LabelTool::firstLine(typed);
    const int comma = text.indexOf(QLatin1Char(','));
    if (comma >= 0)
        text.truncate(comma);
    return toLabelText(toAnsi(text));
}

} // namespace

void editLabelProperties(const ToolContext& context, std::size_t index)
{
    if (index >= context.doc.labelCount())
        return;
    const MapLabel& label = context.doc.labels()[index];
    // A size the format does not name is offered too, so that OK keeps it.
    std::vector<std::int16_t> sizes(std::begin(kLabelSizes), std::end(kLabelSizes));
    if (std::find(sizes.begin(), sizes.end(), label.size) == sizes.end())
        sizes.push_back(label.size);
    LabelDialogFields fields;
    fields.text = fromAnsi(label.text);
    for (const std::int16_t size : sizes) {
        if (size == label.size)
            fields.sizeChoice = fields.sizeNames.size();
        fields.sizeNames << sizeName(size);
    }
    fields.z = QString::fromStdString(singleToText(label.pos.z));
    if (!context.dialogs.labelProperties(fields))
        return;

    LabelFields changed = labelFieldsOf(context.doc, index);
    const std::string text = labelTextOf(fields.text);
    if (text.empty()) {
        context.dialogs.message(QStringLiteral("A label needs a text."));
        return;
    }
    const auto z = textToSingle(fields.z.toStdString());
    if (!z) {
        context.dialogs.message(QStringLiteral("The height is a number, such as 12.5 or -3."));
        return;
    }
    changed.text = text;
    changed.z = singleAsWritten(*z);
    if (fields.sizeChoice >= 0 && std::size_t(fields.sizeChoice) < sizes.size())
        changed.size = sizes[std::size_t(fields.sizeChoice)];
    auto step = std::make_unique<LabelPropertiesCommand>(context.doc, index, std::move(changed));
    if (!step->changesAny())
        return;
    step->redo(context.doc, context.view.currentScale);
    context.history.push(std::move(step));
}

} // namespace plotwell
