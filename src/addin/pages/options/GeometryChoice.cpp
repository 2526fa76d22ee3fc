#include "addin/pages/options/GeometryChoice.h"

#include "addin/pages/options/OptionWindow.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zn {

namespace {

constexpr std::int32_t surfaces = 0;
constexpr std::int32_t curves = 1;
constexpr std::int32_t curvesAndSketches = 2;

} // namespace

GeometryChoice::GeometryChoice(OptionWindow& window, int number, std::int32_t& value)
    : m_value(value)
    , m_surfaces(window.control<QRadioButton>(number, "surfaceGeometry", u"&Solid/Surface geometry"))
    , m_curves(window.control<QRadioButton>(number + 1, "curveGeometry", u"3D &curves"))
    , m_sketches(window.control<QCheckBox>(number + 2, "exportSketches", u"&Export sketch entities"))
{
    auto* below = new QHBoxLayout;
    below->addSpacing(window.indent());
    below->addWidget(m_sketches);
    auto* rows = new QVBoxLayout;
    rows->addWidget(m_surfaces);
    rows->addWidget(m_curves);
    rows->addLayout(below);
    m_layout = rows;

    QObject::connect(m_surfaces, &QRadioButton::clicked, &window, [this] { chooseSurfaces(); });
    QObject::connect(m_curves, &QRadioButton::clicked, &window, [this] { chooseCurves(); });
    QObject::connect(m_sketches, &QCheckBox::clicked, &window, [this] { chooseCurves(); });
}

void GeometryChoice::sync()
{
    (m_value == surfaces ? m_surfaces : m_curves)->setChecked(true);
    m_sketches->setChecked(m_value == curvesAndSketches);
    m_sketches->setEnabled(m_value != surfaces);
}

void GeometryChoice::chooseSurfaces()
{
    m_value = surfaces;
    m_sketches->setEnabled(false);
}

void GeometryChoice::chooseCurves()
{
    m_sketches->setEnabled(true);
    m_value = m_sketches->isChecked() ? curvesAndSketches : curves;
}

} // namespace zn
