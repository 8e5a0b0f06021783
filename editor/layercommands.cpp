#include "editor/layercommands.h"

#include "editor/drawlines.h"
#include "editor/editor.h"
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
    drawLines(editor);
}

void layerCheckClicked(Editor& editor, int /*layer*/)
{
    drawLines(editor);
    editor.focusMap();
}

void setLayerChecked(Editor& editor, int layer, bool checked)
{
    if (editor.layers.checked[layer] == checked)
        return;
    editor.layers.checked[layer] = checked;
    layerCheckClicked(editor, layer);
}

void activeMarkerClicked(Editor& editor, int layer) { setActiveLayer(editor, std::int16_t(layer)); }

void closeAllLayers(Editor& editor)
{
    editor.doc.clearRecords();
    for (int n = 0; n < kLayerCount; ++n) {
        editor.doc.layerFile[n].clear();
        editor.layerStamps[n] = {};
        editor.layers.captions[n] = defaultLayerName(n);
    }
    setActiveLayer(editor, 0);
    resetView(editor.view, editor.doc);
}

} // namespace plotwell
