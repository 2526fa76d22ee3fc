#pragma once

#include <array>
#include <cstdint>
#include <QWidget>

class QToolButton;

namespace zn {

/// One of the nine views that a 3D PDF can publish.
struct PrimaryView {
    std::int32_t bit;
    const char* role;     ///< object name of its button
    const char16_t* name; ///< in English, what a screen reader says
    int row;              ///< place in the cross
    int column;           ///< place in the cross
    int offImage;
    int onImage;
};

inline constexpr std::size_t primaryViewCount = 9;
/// In the order in which their tool tips are numbered.
extern const std::array<PrimaryView, primaryViewCount> primaryViews;

/// Nine picture buttons in a cross, the sides of an unfolded cube. The whole is one stop of the Tab key; the arrow keys
/// move within it, and Space chooses.
class ViewPicker : public QWidget {
public:
    explicit ViewPicker(QWidget* parent);

    /// The button of a row of `primaryViews`, which belongs to this.
    QToolButton* button(std::size_t row) const { return m_buttons[row]; }

    std::int32_t chosen() const { return m_chosen; }
    /// Bits of no view are kept.
    void choose(std::int32_t bits);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showChosen();
    void moveFocus(const QToolButton& from, int rows, int columns);
    void makeTabStop(const QToolButton& stop);

    std::array<QToolButton*, primaryViewCount> m_buttons{};
    std::int32_t m_chosen = 0;
};

} // namespace zn
