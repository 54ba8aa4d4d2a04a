#include "angles.h"

#include <math.h>

#include "texts.h"

namespace survey_road {

namespace {

struct AxisFacts
{
    const char* name;
    const char* letters;
    const WCHAR *allowed, *negative;
    double limit;
};

const AxisFacts& facts_of(Axis axis)
{
    static const AxisFacts facts[] = {
        {key("latitude"), key("N or S"), ZOR_W("NSns"), ZOR_W("Ss"), 90.0},
        {key("longitude"), key("E or W"), ZOR_W("EWew"), ZOR_W("Ww"), 180.0},
    };
    return facts[axis == Axis::Latitude ? 0 : 1];
}

bool is_letter(WCHAR unit)
{
    return (unit >= 'A' && unit <= 'Z') || (unit >= 'a' && unit <= 'z');
}

WCHAR last_of(const Text& text)
{
    return text.empty() ? WCHAR{0} : text[text.GetLength() - 1];
}

// The library passes over what it does not know, in front and behind; a surveyor's file is not to
// be guessed at.
bool read_whole(const Text& text, double& degrees)
{
    const WCHAR* rest = nullptr;
    return text.FindOneOf(ZOR_W("0123456789-.+")) == 0 &&
           zor_formats::StringToDegree(text.c_str(), degrees, &rest) && *rest == 0;
}

} // namespace

bool looks_like_angle(const Text& value, Axis axis)
{
    Text text = value;
    text.Trim();
    if (text.FindOneOf(ZOR_W("0123456789")) < 0)
        return false;
    Text signs = zor_formats::DegreeSignString();
    signs += ZOR_W("'\"");
    return text.FindOneOf(signs.c_str()) >= 0 ||
           Text(facts_of(axis).allowed).Find(last_of(text)) >= 0;
}

std::string parse_angle(const Text& value, Axis axis, double& degrees)
{
    const AxisFacts& facts = facts_of(axis);
    const std::string subject = tr(facts.name), shown = utf8(value);
    Text text = value;
    text.Trim();
    bool flagged = false;
    if (!zor_formats::CheckDegreeSuffix(text.c_str(), facts.allowed, facts.negative, flagged))
        return tr("the {1} ends in a letter other than {2}: \"{3}\"", subject, tr(facts.letters),
                  shown);
    // The letter goes before the angle is read, so that 5.3S is as far as 5.3 is: 5°30'.
    const bool lettered = is_letter(last_of(text));
    if (lettered)
        text = text.Left(text.GetLength() - 1).TrimRight();
    if (!read_whole(text, degrees))
        return tr("the {1} is no angle: \"{2}\"", subject, shown);
    if (text[0] == '-' && lettered)
        return tr("the {1} has a minus and a letter: \"{2}\"", subject, shown);
    if (fabs(degrees) > facts.limit)
        return tr("the {1} is beyond {2} degrees: \"{3}\"", subject,
                  std::to_string(static_cast<int>(facts.limit)), shown);
    if (flagged)
        degrees = -degrees;
    return std::string();
}

Text angle_text(double degrees, int decimals)
{
    // Like the numbers beside it, with a point in every locale.
    return zor_formats::DegreeToStringEx(degrees * 3600.0, zor_formats::DegreeSignString(),
                                         ZOR_W("'"), ZOR_W("\""), ZOR_W("."), true, decimals);
}

Text globe_text(double degrees, Axis axis, int decimals)
{
    Text text = angle_text(fabs(degrees), decimals);
    text += ' ';
    const bool negative = degrees < 0;
    text += static_cast<WCHAR>(axis == Axis::Latitude ? (negative ? 'S' : 'N')
                                                      : (negative ? 'W' : 'E'));
    return text;
}

Text bearing_text(double azimuth, int decimals)
{
    Text prefix, suffix;
    const double angle = zor_formats::DegreeToBearing(azimuth, &prefix, &suffix);
    Text text = prefix;
    text += ' ';
    text += angle_text(angle, decimals);
    text += ' ';
    text += suffix;
    return text;
}

} // namespace survey_road
