// tests/modules/launched.h: a program that tests start.
//
//     launched exit N            ends with that code
//     launched args FILE ...     writes what follows to the file, a line each, as UTF-8
//     launched wait FILE         makes the file and never ends
#pragma once

#include <string>
#include <vector>

int run_launched(const std::vector<std::string>& arguments);
