#pragma once

#include <QLabel>

namespace zn {

/// A line of text that breaks anywhere: a path has no blanks at which a label could break it.
class ExampleLine final : public QLabel {
public:
    explicit ExampleLine(QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace zn
