#pragma once

#include <cstdint>

class QCheckBox;
class QLayout;
class QRadioButton;

namespace zn {

class OptionWindow;

/// The geometry that ACIS and STEP write, one setting of three values: surfaces, curves, or curves with the entities
/// of sketches.
class GeometryChoice {
public:
    /// Makes the controls with the numbers from `number` on. `value` outlives the window.
    GeometryChoice(OptionWindow& window, int number, std::int32_t& value);

    /// Shows the setting.
    void sync();
    /// The controls, for the dialog's layout.
    QLayout* layout() const { return m_layout; }

private:
    void chooseSurfaces();
    void chooseCurves();

    std::int32_t& m_value;
    QRadioButton* m_surfaces;
    QRadioButton* m_curves;
    QCheckBox* m_sketches;
    QLayout* m_layout;
};

} // namespace zn
