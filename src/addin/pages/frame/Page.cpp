#include "addin/pages/frame/Page.h"

namespace zn {

QWidget* windowOf(std::int32_t handle) { return handle == 0 ? nullptr : QWidget::find(static_cast<WId>(handle)); }

std::int32_t handleOf(QWidget& widget) { return static_cast<std::int32_t>(widget.winId()); }

} // namespace zn
