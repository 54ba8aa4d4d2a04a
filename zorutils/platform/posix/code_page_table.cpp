#include "zorutils/platform/posix/code_page_table.h"

#include <unicode/ucnv.h>

#include <iterator>
#include <mutex>

#include "zorutils/platform/posix/code_page_facts.h"

namespace zor {
namespace platform {

namespace {

struct PageName
{
    UINT page;
    const char* converter;
    bool double_byte;
    WCHAR default_unit;
};

constexpr PageName pages[] = {
    {437, "ibm-437_P100-1995", false, '?'},   {874, "windows-874-2000", false, '?'},
    {932, "ibm-943_P15A-2003", true, 0x30FB}, {936, "windows-936-2000", true, '?'},
    {949, "windows-949-2000", true, '?'},     {950, "windows-950-2000", true, '?'},
    {1250, "ibm-5346_P100-1998", false, '?'}, {1251, "ibm-5347_P100-1998", false, '?'},
    {1252, "ibm-5348_P100-1997", false, '?'}, {1253, "ibm-5349_P100-1998", false, '?'},
    {1254, "ibm-5350_P100-1998", false, '?'}, {1255, "ibm-9447_P100-2002", false, '?'},
    {1256, "ibm-9448_X100-2005", false, '?'}, {1257, "ibm-9449_P100-2002", false, '?'},
    {1258, "ibm-5354_P100-1998", false, '?'},
};

struct ConverterClose
{
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterClose>;

// The unit of one or two bytes, 0xFFFD if they are no character of the page.
WCHAR unit_of(UConverter* converter, const char* bytes, int count)
{
    UErrorCode error = U_ZERO_ERROR;
    WCHAR units[4] = {};
    const int length = ucnv_toUChars(converter, units, 4, bytes, count, &error);
    return U_SUCCESS(error) && length == 1 ? units[0] : static_cast<WCHAR>(0xFFFD);
}

void fill_singles(CodePageTable& table, UConverter* converter)
{
    for (unsigned byte = 0; byte < 256; ++byte) {
        const char bytes[] = {static_cast<char>(byte)};
        WCHAR unit = byte < 0x80 ? static_cast<WCHAR>(byte) : unit_of(converter, bytes, 1);
        // A byte that the page leaves undefined stands for the control of its value.
        if (unit == 0xFFFD)
            unit = static_cast<WCHAR>(byte);
        table.unit_of_byte[byte] = table.is_lead[byte] ? table.default_unit : unit;
    }
    for (const Mapping& fact : byte_facts(table.page))
        table.unit_of_byte[fact.bytes] = fact.unit;
}

void fill_pairs(CodePageTable& table, UConverter* converter)
{
    table.unit_of_pair.assign(65536, table.default_unit);
    for (unsigned lead = 0x81; lead < 0xFF; ++lead) {
        for (unsigned trail = 0x30; trail < 0xFF; ++trail) {
            const char bytes[] = {static_cast<char>(lead), static_cast<char>(trail)};
            const WCHAR unit = unit_of(converter, bytes, 2);
            if (unit != 0xFFFD)
                table.unit_of_pair[lead * 256 + trail] = unit;
        }
    }
}

void fill_back(CodePageTable& table, UConverter* converter)
{
    table.bytes_of_unit.assign(65536, '?');
    table.exact.assign(65536, false);
    ucnv_setFallback(converter, true);
    UErrorCode error = U_ZERO_ERROR;
    ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    for (unsigned unit = 0; unit < 65536; ++unit) {
        const WCHAR source[] = {static_cast<WCHAR>(unit)};
        char bytes[8];
        error = U_ZERO_ERROR;
        const int count = ucnv_fromUChars(converter, bytes, sizeof bytes, source, 1, &error);
        if (U_SUCCESS(error) && (count == 1 || count == 2)) {
            const unsigned first = static_cast<unsigned char>(bytes[0]);
            const unsigned second = static_cast<unsigned char>(bytes[1]);
            table.bytes_of_unit[unit] =
                static_cast<unsigned short>(count == 1 ? first : first * 256 + second);
        }
    }
    for (unsigned byte = 0; byte < 256; ++byte) {
        if (byte < 0x80 || !table.double_byte)
            table.bytes_of_unit[table.unit_of_byte[byte]] = static_cast<unsigned short>(byte);
    }
    for (const Mapping& fact : unit_facts(table.page))
        table.bytes_of_unit[fact.unit] = fact.bytes;
    for (unsigned unit = 0; unit < 65536; ++unit) {
        const unsigned bytes = table.bytes_of_unit[unit];
        const WCHAR back = bytes > 255 ? table.unit_of_pair[bytes] : table.unit_of_byte[bytes];
        table.exact[unit] = back == unit;
    }
}

std::unique_ptr<CodePageTable> build(const PageName& name)
{
    UErrorCode error = U_ZERO_ERROR;
    const Converter converter(ucnv_open(name.converter, &error));
    if (U_FAILURE(error))
        return nullptr;
    auto table = std::make_unique<CodePageTable>();
    table->page = name.page;
    table->double_byte = name.double_byte;
    table->default_unit = name.default_unit;
    if (name.double_byte) {
        const unsigned last = name.page == 932 ? 0xFC : 0xFE;
        for (unsigned byte = 0x81; byte <= last; ++byte)
            table->is_lead[byte] = name.page != 932 || byte < 0xA0 || byte > 0xDF;
        fill_pairs(*table, converter.get());
    }
    fill_singles(*table, converter.get());
    fill_back(*table, converter.get());
    return table;
}

} // namespace

const CodePageTable* code_page_table(UINT page)
{
    struct Entry
    {
        std::once_flag once;
        std::unique_ptr<CodePageTable> table;
    };
    // Never destroyed: strings are converted until the process ends.
    static Entry* const entries = new Entry[std::size(pages)];
    for (size_t i = 0; i < std::size(pages); ++i) {
        if (pages[i].page != page)
            continue;
        std::call_once(entries[i].once, [i] { entries[i].table = build(pages[i]); });
        return entries[i].table.get();
    }
    return nullptr;
}

} // namespace platform
} // namespace zor
