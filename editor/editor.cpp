#include "editor/editor.h"

#include "editor/drawlines.h"
#include "platform/memoryhint.h"

namespace plotwell {

Editor::Editor(const Services& services) : services(services) { doc.setFillAdvice(adviseLargeFill); }

ToolContext Editor::toolContext()
{
    return {doc,      history,           view,     selection,        display,
            keys,     palette.activeColor, tools.state, services.surface, services.dialogs,
            services.clipboard, [this] { drawLines(*this); }};
}

} // namespace plotwell
