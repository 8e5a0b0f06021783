#pragma once

#include "tools/tool.h"

#include <QString>

#include <optional>

namespace plotwell {

// Line: each click adds a line from the previous click; the chain stays open
// until Escape is pressed on the map, whatever tool is chosen then. While it
// is open, the pointer drags a rubber band from the last click.
class LineTool : public Tool {
public:
    void press(const ToolContext& context, SurfacePoint p) override;
    void move(const ToolContext& context, int buttons, SurfacePoint p) override;
    void key(const ToolContext& context, int keyCode, int shift) override;

    bool lineInProgress() const { return m_inProgress; }

private:
    bool m_inProgress = false;
    SurfacePoint m_start; // where the next line of the chain begins
    // The line end it was snapped to, when it was: taken exactly as it is.
    std::optional<MapPoint> m_startEnd;
};

// Freehand: while the left button is held, the pointer's path becomes lines
// whose points lie at least 30 world units apart.
class FreehandTool : public Tool {
public:
    static constexpr float kMinStep = 30;

    void move(const ToolContext& context, int buttons, SurfacePoint p) override;
    // Ends the stroke, and with it the step its lines make.
    void release(const ToolContext& context) override;

private:
    MapPoint m_last; // the last point of the stroke; (0, 0) when it has none
};

// The caption box txtCaption, in which a label's text is typed.
struct CaptionBox {
    bool visible = false;
    float left = 0; // surface twips
    float top = 0;
    // Counts the openings, so that the window knows to reset the text.
    int opened = 0;
};

// Label: a click opens the caption box there; Enter in the box makes a label
// at that point, Escape closes it.
class LabelTool : public Tool {
public:
    // The text the box opens with, all of it selected so that typing replaces it.
    static QString newLabelText() { return QStringLiteral("(New Label)"); }

    void press(const ToolContext& context, SurfacePoint p) override;

    const CaptionBox& captionBox() const { return m_box; }
    // Enter in the box: a label with the typed text, unless it is empty or
    // still reads "(New Label)" in any case. The box holds one line: of a
    // text pasted with line breaks it keeps what comes before the first.
    void commitCaption(const ToolContext& context, const QString& text);
    // What a single-line box keeps of a text: all before its first line break.
    static QString firstLine(const QString& text);
    // Escape in the box.
    void cancelCaption() { m_box.visible = false; }

private:
    CaptionBox m_box;
};

} // namespace plotwell
