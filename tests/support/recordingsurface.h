#pragma once

#include "platform/drawingsurface.h"

#include <string>
#include <vector>

namespace plotwell::test {

// A drawing surface that records every operation, for checking what a frame
// drew, in which order and in which colour.
class RecordingSurface : public DrawingSurface {
public:
    enum class Op { Clear, PenWidth, PenColor, FillColor, Line, Circle, TextPosition, Font, Print, Picture, Refresh };

    struct Call {
        Op op = Op::Clear;
        float a = 0, b = 0, c = 0, d = 0; // coordinates, sizes or widths
        ColorRGB colour; // pen, fill or outline colour
        std::string text; // printed text
        // The drawing state in force when the call was made.
        ColorRGB pen;
        ColorRGB fill;
        int penWidth = 1;
        RasterOp rasterOp = RasterOp::Copy;
    };

    std::vector<Call> calls;

    float width() const override { return m_width; }
    float height() const override { return m_height; }
    void resize(float w, float h) override
    {
        m_width = w;
        m_height = h;
    }
    ColorRGB backColor() const override { return m_back; }
    void setBackColor(ColorRGB c) override { m_back = c; }

    void clear() override { add(Op::Clear); }
    void setPenWidth(int px) override
    {
        m_penWidth = px;
        add(Op::PenWidth, float(px));
    }
    void setPenColor(ColorRGB c) override
    {
        m_pen = c;
        add(Op::PenColor, 0, 0, 0, 0, c);
    }
    int penWidth() const override { return m_penWidth; }
    ColorRGB penColor() const override { return m_pen; }
    void setFillColor(ColorRGB c) override
    {
        m_fill = c;
        add(Op::FillColor, 0, 0, 0, 0, c);
    }
    void line(float x1, float y1, float x2, float y2) override { add(Op::Line, x1, y1, x2, y2, m_pen); }
    void circle(float cx, float cy, float r, ColorRGB outline) override { add(Op::Circle, cx, cy, r, 0, outline); }
    void setTextPosition(float x, float y) override { add(Op::TextPosition, x, y); }
    void setFont(float points, bool bold) override { add(Op::Font, points, bold ? 1.f : 0.f); }
    void print(std::string_view text) override { add(Op::Print, 0, 0, 0, 0, m_pen, std::string(text)); }
    void paintPicture(const QImage&, const QRectF& target, const QRectF&, RasterOp op) override
    {
        add(Op::Picture, float(target.x()), float(target.y()), float(target.width()), float(target.height()), {}, {},
            op);
    }
    void refresh() override { add(Op::Refresh); }

    // Calls of one kind, in order.
    std::vector<Call> only(Op op) const
    {
        std::vector<Call> out;
        for (const Call& c : calls)
            if (c.op == op)
                out.push_back(c);
        return out;
    }
    // Whole frames presented so far.
    int frames() const { return int(only(Op::Refresh).size()); }

private:
    void add(Op op, float a = 0, float b = 0, float c = 0, float d = 0, ColorRGB colour = {}, std::string text = {},
             RasterOp rasterOp = RasterOp::Copy)
    {
        calls.push_back({op, a, b, c, d, colour, std::move(text), m_pen, m_fill, m_penWidth, rasterOp});
    }

    float m_width = 6795;
    float m_height = 7155;
    ColorRGB m_back = kWhite;
    ColorRGB m_pen;
    ColorRGB m_fill;
    int m_penWidth = 1;
};

} // namespace plotwell::test
