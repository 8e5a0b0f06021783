#include "editor/editor.h"

#include "platform/memoryhint.h"

namespace plotwell {

Editor::Editor(const Services& services) : services(services) { doc.setFillAdvice(adviseLargeFill); }

} // namespace plotwell
