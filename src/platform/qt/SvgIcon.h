// Icons from our SVG resources, drawn sharp at every size and scale.
#pragma once

#include <QIcon>

namespace calder {

// The icon of that name among the resources (":/icons/NAME.svg"). Nothing is read before it is first drawn.
[[nodiscard]] QIcon IconNamed(const char* name);

} // namespace calder
