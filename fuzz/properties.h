// fuzz/properties.h: what holds for every input of the library's readers of outside text.
//
// Each function takes any bytes and throws std::logic_error if the reader breaks its promise; reads
// past the input are the address sanitizer's to find. The fuzzing engine runs one of them per
// program (engine.cpp), and the ordinary tests replay the corpus through all (tests/fuzz).
#pragma once

#include <stddef.h>

#include <stdexcept>
#include <string>

#include "zorutils/core/zor_api.h"

namespace zor_fuzz {

void numbers(const unsigned char* data, size_t size);
void angles(const unsigned char* data, size_t size);
void names(const unsigned char* data, size_t size);
void text_file(const unsigned char* data, size_t size);
void xml(const unsigned char* data, size_t size);
void resources(const unsigned char* data, size_t size);
void translations(const unsigned char* data, size_t size);

struct Property
{
    const char* name; // also the folder of its corpus
    void (*check)(const unsigned char* data, size_t size);
};

constexpr Property all_properties[] = {
    {"numbers", numbers},           {"angles", angles}, {"names", names},
    {"text_file", text_file},       {"xml", xml},       {"resources", resources},
    {"translations", translations},
};

inline void require(bool holds, const char* promise)
{
    if (!holds)
        throw std::logic_error(promise);
}

// The input as 16-bit text: bytes as they are, but after a first byte of 255 two bytes a unit.
// Ends at its first zero, as the readers' texts do.
inline std::basic_string<WCHAR> units_of(const unsigned char* data, size_t size)
{
    std::basic_string<WCHAR> units;
    const bool wide = size > 0 && data[0] == 0xFF;
    for (size_t i = wide ? 1 : 0; i + (wide ? 1 : 0) < size; i += wide ? 2 : 1) {
        const auto unit = static_cast<WCHAR>(wide ? data[i] | data[i + 1] << 8 : data[i]);
        if (unit == 0)
            break;
        units += unit;
    }
    return units;
}

} // namespace zor_fuzz
