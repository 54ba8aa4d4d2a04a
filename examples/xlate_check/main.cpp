// xlate_check: what is wrong with translation files.
#include <stdio.h>

#include <algorithm>
#include <optional>

#include "catalogue.h"
#include "placeholders.h"

namespace xlate_check {

namespace {

enum ExitCode
{
    all_well = 0,
    problems_found = 1,
    not_read = 2,
    wrong_usage = 3
};

const char usage[] =
    "usage: xlate_check [--against OTHER] FILE...\n"
    "\n"
    "Checks translation files: UTF-16, little-endian, pairs of texts in brackets. Each problem is\n"
    "told as file:line:column. Looks for brackets without their counterpart, keys that stand "
    "twice\n"
    "or without a translation, empty sides, line ends that are not spelled \\n, a context (@@) in "
    "a\n"
    "translation, blanks at the ends and places to fill (%d, %1!s!, {1}) that differ between the "
    "two\n"
    "sides, and looks every key up in the library's own table.\n"
    "\n"
    "  --against OTHER   also keys that OTHER has and FILE lacks, and the other way round\n"
    "\n"
    "exit code: 0 all well; 1 problems were found; 2 a file could not be read; 3 wrong usage\n";

// Such a key or translation is taken by its length modulo 65,536.
constexpr size_t longest = 65535;

std::string quoted(TextView text)
{
    constexpr size_t shown = 60;
    return "\"" + host::utf8(text.substr(0, shown)) + (text.size() > shown ? "...\"" : "\"");
}

Text text_of(TextView view)
{
    return Text(view.data(), static_cast<int>(view.size()));
}

// With real line ends for the spelled ones.
Text real(TextView view)
{
    Text text = text_of(view);
    text.Replace(ZOR_W("\\r"), ZOR_W("\r"));
    text.Replace(ZOR_W("\\n"), ZOR_W("\n"));
    return text;
}

// The blanks in front of a text, a stroke, and those behind it.
std::string blanks(TextView text)
{
    const auto is_blank = [](WCHAR unit) { return unit == ' ' || unit == '\t'; };
    const auto front = std::find_if_not(text.begin(), text.end(), is_blank) - text.begin();
    const auto back = std::find_if_not(text.rbegin(), text.rend(), is_blank) - text.rbegin();
    return std::to_string(front) + "|" + std::to_string(back);
}

// What is wrong with one side; empty if nothing is.
std::string fault_of(TextView text, const char* side)
{
    const std::string what = std::string("the ") + side;
    if (text.empty())
        return what + " is empty: the pair does not count";
    if (text.size() > longest)
        return what + " has more than 65,535 units";
    if (text.find_first_of(TextView(ZOR_W("\r\n"))) != TextView::npos)
        return what + " holds a line end; spell it \\r or \\n";
    return std::string();
}

void check_pair(const Pair& pair, std::vector<Problem>& problems)
{
    const std::string key_fault = fault_of(pair.key, "key");
    const std::string value_fault = fault_of(pair.value, "translation");
    if (!key_fault.empty())
        problems.push_back({pair.key_place, key_fault});
    if (!value_fault.empty())
        problems.push_back({pair.value_place, value_fault + " (" + quoted(pair.key) + ")"});
    if (!key_fault.empty() || !value_fault.empty())
        return;
    const Text plain = CXlateTable::RemoveContext(text_of(pair.key).c_str());
    const TextView source = host::view(plain);
    const Text translation = text_of(pair.value);
    if (CXlateTable::RemoveContext(translation.c_str()).Compare(translation.c_str()) != 0)
        problems.push_back(
            {pair.value_place, "the translation has a context, which users will see"});
    const std::string places = placeholders(source), others = placeholders(pair.value);
    if (places != others)
        problems.push_back({pair.value_place, "places to fill differ: the key has \"" + places +
                                                  "\", the translation \"" + others + "\""});
    if (blanks(source) != blanks(pair.value))
        problems.push_back({pair.value_place,
                            "blanks at the ends differ from those of the key " + quoted(pair.key)});
}

// Keys that stand twice, and those that the library does not find as they are meant: of two it may
// give either.
void check_lookups(const Catalogue& catalogue, const Text& path, std::vector<Problem>& problems)
{
    const CXlateTable table(path.c_str());
    std::map<TextView, Place> seen;
    std::map<TextView, std::vector<TextView>> meant;
    for (const Pair& pair : catalogue.pairs())
        meant[pair.key].push_back(pair.value);
    for (const Pair& pair : catalogue.pairs()) {
        if (pair.value.empty() || !fault_of(pair.key, "").empty())
            continue;
        const auto [first, is_new] = seen.emplace(pair.key, pair.key_place);
        if (!is_new) {
            problems.push_back({pair.key_place, "the key " + quoted(pair.key) +
                                                    " stands already in line " +
                                                    std::to_string(first->second.line)});
            continue;
        }
        const Text given = table.Xlate(text_of(pair.key).c_str());
        const auto& values = meant[pair.key];
        if (std::none_of(values.begin(), values.end(),
                         [&](TextView value) { return given.Compare(real(value).c_str()) == 0; }))
            problems.push_back({pair.key_place, "the library does not give this translation"});
    }
}

void check_against(const Catalogue& catalogue, const Catalogue& other, const std::string& name,
                   std::vector<Problem>& problems)
{
    for (const Pair& pair : other.pairs()) {
        if (!pair.key.empty() && !catalogue.has(pair.key))
            problems.push_back({{}, "lacks the key " + quoted(pair.key) + " of " + name});
    }
    for (const Pair& pair : catalogue.pairs()) {
        if (!pair.key.empty() && !other.has(pair.key))
            problems.push_back(
                {pair.key_place, "the key " + quoted(pair.key) + " is not in " + name});
    }
}

int check(const Text& path, const Catalogue* other, const std::string& other_name)
{
    const std::string name = host::utf8(path);
    Catalogue catalogue;
    std::string reason;
    if (!catalogue.read(path, reason)) {
        fprintf(stderr, "%s: %s\n", name.c_str(), reason.c_str());
        return not_read;
    }
    std::vector<Problem> problems = catalogue.problems();
    for (const Pair& pair : catalogue.pairs())
        check_pair(pair, problems);
    check_lookups(catalogue, path, problems);
    if (other != nullptr)
        check_against(catalogue, *other, other_name, problems);
    std::stable_sort(problems.begin(), problems.end(), [](const Problem& a, const Problem& b) {
        return a.place.line != b.place.line ? a.place.line < b.place.line
                                            : a.place.column < b.place.column;
    });
    for (const Problem& problem : problems)
        fprintf(stderr, "%s:%s:%s: %s\n", name.c_str(), std::to_string(problem.place.line).c_str(),
                std::to_string(problem.place.column).c_str(), problem.text.c_str());
    printf("%s: %s pairs, %s problems\n", name.c_str(),
           std::to_string(catalogue.pairs().size()).c_str(),
           std::to_string(problems.size()).c_str());
    return problems.empty() ? all_well : problems_found;
}

int run_check(const std::vector<Text>& arguments)
{
    host::prepare_console();
    std::vector<Text> files;
    std::optional<Text> against;
    for (size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i].Compare(ZOR_W("--help")) == 0) {
            fputs(usage, stdout);
            return all_well;
        }
        if (arguments[i].Compare(ZOR_W("--against")) == 0 && i + 1 < arguments.size()) {
            against = arguments[++i];
        } else if (arguments[i].Find(ZOR_W("--")) == 0) {
            fprintf(stderr, "xlate_check: unknown option %s\n%s", host::utf8(arguments[i]).c_str(),
                    usage);
            return wrong_usage;
        } else {
            files.push_back(arguments[i]);
        }
    }
    if (files.empty()) {
        fprintf(stderr, "xlate_check: no file given\n%s", usage);
        return wrong_usage;
    }
    Catalogue other;
    std::string reason;
    if (against && !other.read(*against, reason)) {
        fprintf(stderr, "%s: %s\n", host::utf8(*against).c_str(), reason.c_str());
        return not_read;
    }
    int worst = all_well;
    for (const Text& file : files)
        worst = std::max(worst, check(file, against ? &other : nullptr,
                                      against ? host::utf8(*against) : std::string()));
    return worst;
}

} // namespace

} // namespace xlate_check

int host::run(const std::vector<Text>& arguments)
{
    return xlate_check::run_check(arguments);
}
