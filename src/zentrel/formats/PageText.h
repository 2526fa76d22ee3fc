#pragma once

#include <memory>
#include <pango/pangocairo.h>
#include <string>

namespace zn::zentrel {

/// A line of text on a page. Each letter comes from a font of the machine that has it, the sans-serif one first; where
/// none has it, a box with the character's number stands in its place. Scripts that run from right to left do so.
class PageText {
public:
    /// `height` is that of a capital letter. Lengths are in units of the page, which lives longer.
    PageText(cairo_t* page, const std::string& utf8, double height);

    double width() const;
    /// With the left end of the base line at the page's current point.
    void show() const;

private:
    struct Unref {
        void operator()(PangoLayout* layout) const { g_object_unref(layout); }
    };

    cairo_t* m_page;
    std::unique_ptr<PangoLayout, Unref> m_layout;
    PangoLayoutLine* m_line; ///< of the layout, which has no other
};

} // namespace zn::zentrel
