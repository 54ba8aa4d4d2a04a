// What the columns of a delimited text hold.
#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <unordered_set>

#include "angles.h"
#include "list_line.h"
#include "output.h"
#include "reader.h"
#include "texts.h"

namespace survey_road {

namespace {

struct ColumnFacts
{
    Text heading;
    std::array<size_t, ttvDateTime + 1> kinds{};
    size_t angles = 0, numbers = 0;
    double least = std::numeric_limits<double>::infinity();
    double most = -std::numeric_limits<double>::infinity();
    bool distinct = true; // no value stands twice, so far
    std::unordered_set<std::basic_string<WCHAR>> seen;
    std::string role;

    size_t filled() const { return total() - kinds[ttvEmpty]; }
    size_t total() const
    {
        size_t sum = 0;
        for (const size_t count : kinds)
            sum += count;
        return sum;
    }

    void add(const Text& value)
    {
        ++kinds[static_cast<size_t>(zor_formats::getTextValType(value.c_str()))];
        double number = 0;
        if (parse_number(value, number)) {
            ++numbers;
            least = std::min(least, number);
            most = std::max(most, number);
        }
        angles +=
            looks_like_angle(value, Axis::Latitude) || looks_like_angle(value, Axis::Longitude);
        if (!distinct || value.empty())
            return;
        distinct = seen.insert(std::basic_string<WCHAR>(view(value))).second;
        if (!distinct)
            seen.clear();
    }
};

constexpr const char* kind_names[] = {key("text"),  key("integer"), key("real"),
                                      key("empty"), key("date"),    key("date and time")};

// The kind of the column: of all its values, or the one that takes them all.
TTextValType kind_of(const ColumnFacts& column)
{
    const size_t filled = column.filled();
    if (filled == 0)
        return ttvEmpty;
    for (const TTextValType kind : {ttvInteger, ttvReal, ttvDate, ttvDateTime}) {
        if (column.kinds[kind] == filled)
            return kind;
    }
    const bool numbers = column.kinds[ttvInteger] + column.kinds[ttvReal] == filled;
    return numbers ? ttvReal : ttvText;
}

bool is_number(const ColumnFacts& column)
{
    const TTextValType kind = kind_of(column);
    return kind == ttvInteger || kind == ttvReal;
}

std::string counts_of(const ColumnFacts& column)
{
    std::string text;
    for (const TTextValType kind : {ttvInteger, ttvReal, ttvDate, ttvDateTime, ttvText, ttvEmpty}) {
        if (column.kinds[kind] == 0)
            continue;
        text += text.empty() ? "" : ", ";
        text += std::to_string(column.kinds[kind]) + " " + tr(kind_names[kind]);
    }
    return text;
}

std::string range_of(const ColumnFacts& column)
{
    return tr("{1} to {2}", utf8(zor_formats::DoubleToString(column.least)),
              utf8(zor_formats::DoubleToString(column.most)));
}

struct RoleWords
{
    const char* role;
    std::array<const WCHAR*, 9> words; // in small letters
};

// What surveyors write above such columns.
constexpr RoleWords role_words[] = {
    {key("name"),
     {ZOR_W("name"), ZOR_W("point"), ZOR_W("pt"), ZOR_W("id"), ZOR_W("number"), ZOR_W("no"),
      ZOR_W("nr"), ZOR_W("ptno"), ZOR_W("point name")}},
    {key("northing"),
     {ZOR_W("northing"), ZOR_W("north"), ZOR_W("n"), ZOR_W("y"), ZOR_W("latitude"), ZOR_W("lat")}},
    {key("easting"),
     {ZOR_W("easting"), ZOR_W("east"), ZOR_W("e"), ZOR_W("x"), ZOR_W("longitude"), ZOR_W("lon"),
      ZOR_W("long")}},
    {key("elevation"),
     {ZOR_W("elevation"), ZOR_W("elev"), ZOR_W("z"), ZOR_W("h"), ZOR_W("height"), ZOR_W("level"),
      ZOR_W("alt"), ZOR_W("altitude")}},
    {key("description"),
     {ZOR_W("description"), ZOR_W("desc"), ZOR_W("code"), ZOR_W("note"), ZOR_W("remark")}},
};

bool take_roles_from_headings(std::vector<ColumnFacts>& columns)
{
    bool any = false;
    for (const RoleWords& role : role_words) {
        for (ColumnFacts& column : columns) {
            Text heading = column.heading;
            heading.Trim().MakeLower();
            const bool named =
                std::any_of(role.words.begin(), role.words.end(), [&](const WCHAR* word) {
                    return word != nullptr && heading.Compare(word) == 0;
                });
            if (!named || !column.role.empty())
                continue;
            column.role = tr("{1}: its heading says so", tr(role.role));
            any = true;
            break;
        }
    }
    return any;
}

void take_roles_from_values(std::vector<ColumnFacts>& columns)
{
    const auto name = std::find_if(columns.begin(), columns.end(), [](const ColumnFacts& column) {
        return column.distinct && column.filled() == column.total() && column.angles == 0 &&
               kind_of(column) != ttvReal;
    });
    auto behind = columns.begin();
    if (name != columns.end()) {
        name->role = tr("name: every line has one, and none stands twice");
        behind = name + 1;
    }
    const char* const roles[] = {key("northing"), key("easting"), key("elevation")};
    const char* const places[] = {key("first"), key("second"), key("third")};
    size_t next = 0;
    for (auto column = behind; column != columns.end() && next < 3; ++column) {
        const bool angles = column->filled() > 0 && column->angles == column->filled();
        if ((!angles || next == 2) && !is_number(*column))
            continue;
        const std::string role = tr(roles[next]), place = tr(places[next]);
        const std::string range = angles ? std::string() : range_of(*column);
        column->role =
            name != columns.end()
                ? angles ? tr("{1}: {2} column of angles behind the name", role, place)
                         : tr("{1}: {2} column of numbers behind the name, {3}", role, place, range)
            : angles ? tr("{1}: {2} column of angles", role, place)
                     : tr("{1}: {2} column of numbers, {3}", role, place, range);
        ++next;
    }
}

const char* delimiter_name(char delimiter)
{
    switch (delimiter) {
    case '\t':
        return key("tabs");
    case ';':
        return key("semicolons");
    case ',':
        return key("commas");
    default:
        return key("blanks");
    }
}

} // namespace

bool print_columns(const Text& file, Report& report)
{
    ListFile list;
    if (!list.open(file)) {
        report.failed(file, tr("cannot be opened"));
        return false;
    }
    std::vector<ColumnFacts> columns;
    size_t lines = 0;
    bool heading = false;
    for (bool first = true; list.next(); first = false) {
        const auto& values = list.values();
        const auto count = static_cast<size_t>(values.GetSize());
        // A column that earlier lines did not have was empty there.
        while (columns.size() < count)
            columns.emplace_back().kinds[ttvEmpty] = lines;
        if (first && is_heading(values)) {
            heading = true;
            for (size_t i = 0; i < count; ++i)
                columns[i].heading = values[static_cast<int>(i)];
            continue;
        }
        for (size_t i = 0; i < columns.size(); ++i)
            columns[i].add(i < count ? values[static_cast<int>(i)] : Text());
        ++lines;
    }
    if (lines == 0) {
        report.failed(file, tr("holds no lines of values"));
        return false;
    }
    if (!heading || !take_roles_from_headings(columns))
        take_roles_from_values(columns);
    const std::string divided = tr(delimiter_name(list.delimiter())), count = std::to_string(lines);
    puts((utf8(file) + ": " +
          (heading ? tr("{1} lines, divided by {2}, with a heading", count, divided)
                   : tr("{1} lines, divided by {2}", count, divided)))
             .c_str());
    print_aligned({{key("Column"), true},
                   {key("Heading"), false},
                   {key("Kind"), false},
                   {key("Values"), false},
                   {key("Looks like"), false}},
                  columns.size(), [&](size_t i) -> Row {
                      const ColumnFacts& column = columns[i];
                      const bool angles = column.angles > 0 && column.angles == column.filled();
                      return {std::to_string(i + 1), utf8(column.heading),
                              tr(angles ? key("text (angles)") : kind_names[kind_of(column)]),
                              counts_of(column), column.role};
                  });
    return true;
}

} // namespace survey_road
