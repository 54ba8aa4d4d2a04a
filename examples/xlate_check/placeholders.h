// xlate_check/placeholders.h: the places in a text that a program fills.
#pragma once

#include <string>

#include "../common/console.h"

namespace xlate_check {

// "%s %d" in the order in which they are filled; "%1!d!", "%2" and "{1}" by number, since their
// order is the translator's. "%%" and "{{" are none. Texts with the same places give the same.
std::string placeholders(host::TextView text);

} // namespace xlate_check
