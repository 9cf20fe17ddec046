#include "platform/DeviceContext.h"

#include <algorithm>

namespace calder {

void DeviceContext::Rows(int top, int bottom, std::span<const Color> colors) {
  for (std::size_t first = 0; first < colors.size() && top < bottom;) {
    std::size_t end = first + 1;
    while (end < colors.size() && colors[end] == colors[first]) ++end;
    FillRectangle(static_cast<int>(first), top, static_cast<int>(end - first), bottom - top, colors[first]);
    first = end;
  }
}

} // namespace calder
