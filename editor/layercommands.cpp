#include "editor/layercommands.h"

#include "editor/editor.h"
#include "editor/edits.h"
#include "view/viewcontrol.h"

namespace plotwell {

ColorRGB markerColor(const Editor& editor, int layer)
{
    return layer == editor.doc.activeLayer ? kRed : kWhite;
}

void setActiveLayer(Editor& editor, std::int16_t layer)
{
    editor.doc.activeLayer = layer;
    // The active layer is always made visible.
    setLayerChecked(editor, layer, true);
    editor.drawLines();
}

void layerCheckClicked(Editor& editor, int layer, bool checked)
{
    editor.display.layerChecked[layer] = checked;
    editor.drawLines();
    editor.focusMap();
}

void setLayerChecked(Editor& editor, int layer, bool checked)
{
    if (editor.display.layerChecked[layer] == checked)
        return;
    layerCheckClicked(editor, layer, checked);
}

void activeMarkerClicked(Editor& editor, int layer)
{
    setActiveLayer(editor, std::int16_t(layer));
}

void closeAllLayers(Editor& editor)
{
    // One step: undoing it brings back every record and every layer's file.
    LayerStep step(editor);
    constexpr unsigned kAllLayers = (1u << kLayerCount) - 1;
    step.takeLayers(kAllLayers);
    for (int n = 0; n < kLayerCount; ++n)
        editor.doc.homes[std::size_t(n)] = LayerHome::empty(n);
    // Empty layers without files hold nothing to lose.
    step.push(QStringLiteral("Close All Layers"), kAllLayers);
    setActiveLayer(editor, 0);
    resetView(editor.view, editor.doc);
}

} // namespace plotwell
