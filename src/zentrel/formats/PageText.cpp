#include "zentrel/formats/PageText.h"

namespace zn::zentrel {

namespace {

/// Of the em square, in fonts of the common kind: a text's height is that of its capitals.
constexpr double capitalFraction = 0.72;

/// Letters stand where their widths put them: a page has no pixels to which they could be moved.
void dontMoveToPixels(PangoContext* context)
{
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context, options);
    cairo_font_options_destroy(options);
    pango_context_set_round_glyph_positions(context, FALSE);
}

} // namespace

PageText::PageText(cairo_t* page, const std::string& utf8, double height)
    : m_page(page)
    , m_layout(pango_cairo_create_layout(page))
{
    dontMoveToPixels(pango_layout_get_context(m_layout.get()));
    PangoFontDescription* const font = pango_font_description_new();
    pango_font_description_set_family_static(font, "sans-serif");
    pango_font_description_set_absolute_size(font, height / capitalFraction * PANGO_SCALE);
    pango_layout_set_font_description(m_layout.get(), font);
    pango_font_description_free(font);
    pango_layout_set_single_paragraph_mode(m_layout.get(), TRUE);
    pango_layout_set_text(m_layout.get(), utf8.data(), static_cast<int>(utf8.size()));
    m_line = pango_layout_get_line_readonly(m_layout.get(), 0);
}

double PageText::width() const
{
    PangoRectangle extents;
    pango_layout_line_get_extents(m_line, nullptr, &extents);
    return static_cast<double>(extents.width) / PANGO_SCALE;
}

void PageText::show() const { pango_cairo_show_layout_line(m_page, m_line); }

} // namespace zn::zentrel
