// Point names, masks and value lists.
#include "fuzz/properties.h"
#include "tests/formats/exact_text.h"
#include "zorutils/formats/point_names.h"
#include "zorutils/formats/value_lists.h"

using namespace zor_formats;

namespace {

void check_name(const CZorStringT<WCHAR>& name)
{
    CZorStringT<WCHAR> next = name;
    if (DoIncPtno(next, 1))
        zor_fuzz::require(next.GetLength() >= name.GetLength(), "a next name is no shorter");
    else
        zor_fuzz::require(next.Compare(name) == 0, "a name that has no next stays");
    zor_fuzz::require(MakeNameCorrect(name, 10).GetLength() <= 10, "a corrected name fits");
    int ampersands = 0;
    for (int i = 0; i < name.GetLength(); ++i)
        ampersands += name.GetAt(i) == '&';
    zor_fuzz::require(DoubleAmpersandForDisplay(name).GetLength() >= name.GetLength() &&
                          DoubleAmpersandForDisplay(name).GetLength() <=
                              name.GetLength() + ampersands,
                      "ampersands at most double");
}

} // namespace

void zor_fuzz::names(const unsigned char* data, size_t size)
{
    const ExactText text(units_of(data, size));
    const CZorStringT<WCHAR> name(text.get());
    check_name(name);
    require(CheckFormat(text.get(), text.get()), "a text fits the mask that it is itself");

    StringArray values;
    require(ParseDelimitersValues(name, values, ZOR_W(",;")) && values.GetSize() >= 1,
            "every line has a value");
    for (const auto& value : values)
        require(value.FindOneOf(ZOR_W("\r\n")) < 0, "no value holds a line end");
    values.RemoveAll();
    if (ParseValues(name, values, ';', ZOR_W(",")))
        for (const auto& value : values)
            require(value.Find(',') < 0, "no value holds what is forbidden");
}
