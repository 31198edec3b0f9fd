#pragma once

#include <MelkarCommon/frame/contents.h>

#include <string>
#include <vector>

namespace melkar::tool {

/// What stands at a point of a picture, in words: "Thu 26: 10015 steps (figure)". Empty if nothing with an area does.
std::string ShownAt(const std::vector<Contents>& pictures, CPoint at);

} // namespace melkar::tool
