// survey_road/texts.h: the program's texts in the user's language.
//
//     fprintf(stderr, "%s\n", tr("the {1} is no number: \"{2}\"", tr("northing"), value).c_str());
//
// The English text is the key. Translations lie beside the program, in
// lang/survey_road.<language>.txt (docs/survey_road.md).
#pragma once

#include <string>

#include "points.h"

namespace survey_road {

// Translates from now on. False if there is no file for the language, and texts stay English; "en"
// and an empty language always are.
bool use_language(const Text& language);

// Marks a text that is translated later, for the list of all texts (scripts/list_texts.py).
constexpr const char* key(const char* text)
{
    return text;
}

// The translation with the fields {1}, {2} ... replaced by values, as UTF-8. The English text where
// the translation has a field that is none.
template <class... Values>
std::string tr(const char* text, const Values&... values)
{
    const Text source = from_utf8(text);
    const auto filled = [&](const Text& format) {
        return zor_text::detail::zor_safefmt_impl(format.c_str(), sizeof...(values),
                                                  from_utf8(values).c_str()...);
    };
    const Text translated = filled(Xlate(source.c_str()));
    return utf8(translated.empty() ? filled(source) : translated);
}

} // namespace survey_road
