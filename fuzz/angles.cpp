// Readers of angles: the rest lies in the text, and what was read prints without sixties.
#include <math.h>

#include "fuzz/properties.h"
#include "tests/formats/exact_text.h"
#include "zorutils/formats/angle_text.h"
#include "zorutils/formats/text_value.h"

using namespace zor_formats;

void zor_fuzz::angles(const unsigned char* data, size_t size)
{
    const ExactText text(units_of(data, size));
    double degrees = 77.0;
    const WCHAR* rest = nullptr;
    const bool read = StringToDegree(text.get(), degrees, &rest);
    require(is_str_degree(text.get()) == read, "what can be read is told to be an angle");
    if (!read) {
        require(degrees == 0.0 && rest == nullptr, "a refused angle is zero");
    } else {
        require(rest >= text.get() && rest <= text.get() + text.length(),
                "the rest is in the text");
        if (fabs(degrees) < 1e5) {
            const auto printed = DegreeToString(degrees * 3600.0, false, 3);
            require(printed.Find(ZOR_W("'60.")) < 0 && printed.Find(ZOR_W("\u00B060'")) < 0,
                    "no sixty is printed");
            require(is_str_degree(printed), "a printed angle can be read");
        }
    }
    bool flagged = true;
    if (!CheckDegreeSuffix(text.get(), ZOR_W("NS"), ZOR_W("S"), flagged))
        require(!flagged, "a refused suffix is not flagged");
    const TTextValType type = getTextValType(text.get());
    require(type >= ttvText && type <= ttvDateTime, "every text has a kind");
}
