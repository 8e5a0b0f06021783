#include "tools/deletion.h"

namespace plotwell {

namespace {

const QString kDelete = QStringLiteral("Delete");

} // namespace

bool deleteSelected(const ToolContext& context)
{
    TakenRecords removed = context.doc.takeRecordsWhere([](std::int16_t, bool selected) { return selected; });
    const bool any = !removed.empty();
    context.history.recordRemoved(std::move(removed), kDelete);
    return any;
}

void removeLastLine(const ToolContext& context)
{
    MapDocument& doc = context.doc;
    if (doc.lineCount() > 0)
        context.history.recordRemoved(doc.takeRecordsFrom(doc.lineCount() - 1, doc.labelCount()), kDelete);
    context.drawFrame();
}

void removeLastLabel(const ToolContext& context)
{
    MapDocument& doc = context.doc;
    if (doc.labelCount() > 0)
        context.history.recordRemoved(doc.takeRecordsFrom(doc.lineCount(), doc.labelCount() - 1), kDelete);
    context.drawFrame();
}

void deleteKey(const ToolContext& context, int shift)
{
    if (deleteSelected(context))
        return;
    if (shift == kShiftMask)
        removeLastLabel(context);
    else
        removeLastLine(context);
}

} // namespace plotwell
