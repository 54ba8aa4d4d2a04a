#include "preferences.h"

#include <algorithm>
#include <iterator>

#include "options.h"
#include "texts.h"

namespace survey_road {

namespace {

struct DelimiterName
{
    const WCHAR* name;
    char delimiter;
};

constexpr DelimiterName delimiter_names[] = {
    {ZOR_W("comma"), ','}, {ZOR_W("semicolon"), ';'}, {ZOR_W("tab"), '\t'}, {ZOR_W("blank"), ' '}};

bool take_delimiter(const Text& text, char& delimiter)
{
    const auto* const found =
        std::find_if(std::begin(delimiter_names), std::end(delimiter_names),
                     [&](const DelimiterName& row) { return text.CompareNoCase(row.name) == 0; });
    if (found == std::end(delimiter_names))
        return false;
    delimiter = found->delimiter;
    return true;
}

} // namespace

Preferences read_preferences()
{
    Preferences preferences;
    Text& path = preferences.path;
    path = GetRootDir();
    path += ZOR_W("\\survey_road.ini");
    if (!FileFuncs::IsFileExist(path))
        return preferences;
    zor_settings::CThreeTupleStore store;
    zor::text_utils::EZorTextEncoding encoding;
    if (!zor_settings::readSettingsAsIni(path.c_str(), store, encoding))
        preferences.complaints.push_back(
            key("a line is no setting; the settings behind it are not used"));
    const Text section(ZOR_W("Preferences"));
    Text value;
    if (store.getValue(section, ZOR_W("Precision"), value) &&
        !take_precision(value, preferences.precision))
        preferences.complaints.push_back(key("Precision is a whole number from 0 to 9"));
    if (store.getValue(section, ZOR_W("Delimiter"), value) &&
        !take_delimiter(value, preferences.delimiter))
        preferences.complaints.push_back(key("Delimiter is comma, semicolon, tab or blank"));
    store.getValue(section, ZOR_W("Language"), preferences.language);
    return preferences;
}

void print_complaints(const Preferences& preferences)
{
    for (const char* const complaint : preferences.complaints) {
        fprintf(stderr, "%s: %s\n", utf8(preferences.path).c_str(), tr(complaint).c_str());
        zor_logging::ZOR_TRACE_ALWAYS("preferences: %s", complaint);
    }
}

} // namespace survey_road
