#include "texts.h"

namespace survey_road {

namespace {

// A language's name goes into a file's: letters, digits, "-" and "_".
bool is_language(const Text& language)
{
    for (int i = 0; i < language.GetLength(); ++i) {
        const WCHAR unit = language[i];
        if ((unit < '0' || unit > '9') && (unit < 'A' || unit > 'Z') &&
            (unit < 'a' || unit > 'z') && unit != '-' && unit != '_')
            return false;
    }
    return true;
}

} // namespace

bool use_language(const Text& language)
{
    if (language.empty() || language.Compare(ZOR_W("en")) == 0)
        return true;
    Text path = GetExeDir();
    path += ZOR_W("\\lang\\survey_road.");
    path += language;
    path += ZOR_W(".txt");
    if (!is_language(language) || !FileFuncs::IsFileExist(path))
        return false;
    LoadTranslateFile(path);
    return true;
}

} // namespace survey_road
