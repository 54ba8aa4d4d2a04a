#include "zorutils/zortext/xlateWnd.h"

#include <gtest/gtest.h>

#include "tests/support/debug_capture.h"
#include "tests/support/temp_folder.h"
#include "tests/support/ui.h"
#include "zorutils/fs/platform_file.h"

using namespace zor_test;

namespace {

typedef std::basic_string<WCHAR> Units;

constexpr UINT separator = 0x800, bitmap = 0x4, bar_break = 0x20, column_break = 0x40;

class XlateUi : public testing::Test
{
protected:
    ~XlateUi() override { UnloadTranslateFile(); }

    void load(const std::string& pairs)
    {
        UnloadTranslateFile();
        LoadTranslateFile(folder.write("t.txt", utf16(Units(pairs.begin(), pairs.end()))));
    }
    // How often a walk over a dialog sets the text of its only child.
    int sets(const char* class_name, LONG style, const char* text)
    {
        HWND const dialog = ui.dialog("title");
        HWND const child = ui.child(dialog, class_name, style, text);
        EXPECT_EQ(XlateWnd(dialog), 1);
        return ui.sets(child);
    }

    TempFolder folder;
    Ui ui;
};

Wide in_angles(const WCHAR* text)
{
    Wide result(ZOR_W("<"));
    result += text;
    result += ZOR_W(">");
    return result;
}

Wide unchanged(const WCHAR* text)
{
    return text;
}

} // namespace

// --- The process-wide table.

TEST_F(XlateUi, WithoutATableTheContextIsTakenOff)
{
    EXPECT_EQ(shown(Xlate(ZOR_W("Open@@Menu"))), "Open");
    EXPECT_EQ(shown(Xlate(ZOR_W("Open"))), "Open");
    const DebugCapture capture;
    EXPECT_EQ(shown(Xlate(nullptr)), "");
    EXPECT_TRUE(capture.texts().empty()) << "null is no report without a table";
}

TEST_F(XlateUi, LoadAndUnload)
{
    load("[Open@@Menu][Auf]");
    EXPECT_EQ(shown(Xlate(ZOR_W("Open@@Menu"))), "Auf");
    UnloadTranslateFile();
    EXPECT_EQ(shown(Xlate(ZOR_W("Open@@Menu"))), "Open");
    UnloadTranslateFile();
    LoadTranslateFile(folder.wide("missing.txt"));
    EXPECT_EQ(shown(Xlate(ZOR_W("Open@@Menu"))), "Open");
    const DebugCapture capture;
    EXPECT_EQ(shown(Xlate(nullptr)), "");
    EXPECT_EQ(records(capture, u"DBGCHK  zortext\\xlateTable @ 144"), 1)
        << "a failed load leaves a table";
}

TEST_F(XlateUi, ASecondLoadKeepsTheFirstFileMapped)
{
    const auto writable = [this](const char* name) {
        const base::PlatformFile file = base::CreatePlatformFile(
            folder.wide(name), base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_WRITE, nullptr,
            nullptr);
        base::ClosePlatformFile(file);
        return file != base::PlatformFile(~intptr_t{0});
    };
    const std::string first = "[a][1]", second = "[a][2]";
    folder.write("first.txt", utf16(Units(first.begin(), first.end())));
    folder.write("second.txt", utf16(Units(second.begin(), second.end())));
    LoadTranslateFile(folder.wide("first.txt"));
    EXPECT_EQ(shown(Xlate(ZOR_W("a"))), "1");
    LoadTranslateFile(folder.wide("second.txt"));
    EXPECT_EQ(shown(Xlate(ZOR_W("a"))), "2");
    UnloadTranslateFile();
    EXPECT_EQ(shown(Xlate(ZOR_W("a"))), "a") << "the first table is not back";
    EXPECT_TRUE(writable("second.txt"));
    EXPECT_FALSE(writable("first.txt")) << "never released, on purpose";
}

// --- Titles.

TEST_F(XlateUi, ATitleIsSetOnlyIfItChanged)
{
    load("[Job][Auftrag][Same][Same]");
    HWND const job = ui.dialog("Job");
    const int before = ui.sets(job);
    EXPECT_EQ(XlateWndTitle(job), 0);
    EXPECT_EQ(ui.text(job), "Auftrag");
    EXPECT_EQ(ui.sets(job), before + 1);
    EXPECT_EQ(XlateWndTitle(job), 0);
    EXPECT_EQ(ui.sets(job), before + 1);
    for (const char* title : {"Same", "Unknown", ""}) {
        HWND const other = ui.dialog(title);
        const int sets = ui.sets(other);
        EXPECT_EQ(XlateWndTitle(other), 0);
        EXPECT_EQ(ui.sets(other), sets) << title;
    }
    HWND const context = ui.dialog("Points@@Box");
    EXPECT_EQ(XlateWndTitle(context), 0);
    EXPECT_EQ(ui.text(context), "Points");
}

TEST_F(XlateUi, LongTitlesAreReadWhole)
{
    const std::string title(700, 'x');
    load("[" + title + "][short]");
    HWND const dialog = ui.dialog(title.c_str());
    EXPECT_EQ(XlateWndTitle(dialog), 0);
    EXPECT_EQ(ui.text(dialog), "short");
}

TEST_F(XlateUi, NullHandlesAreReported)
{
    const DebugCapture capture;
    EXPECT_EQ(XlateWndTitle(nullptr), -1);
    EXPECT_EQ(records(capture, u"DBGCHK  zortext\\xlateWnd @ 234"), 1);
    EXPECT_EQ(XlateWnd(nullptr), -1);
    EXPECT_EQ(records(capture, u"DBGCHK  zortext\\xlateWnd @ 157"), 1);
    EXPECT_EQ(XlateMenu(nullptr, nullptr), 0);
    EXPECT_EQ(records(capture, u"DBGCHK  zortext\\xlateWnd @ 102"), 1);
}

// --- Windows.

TEST_F(XlateUi, AWalkTranslatesTitleAndChildren)
{
    load("[Job][Auftrag][OK][Gut][Name:][Name der Datei:]");
    HWND const dialog = ui.dialog("Job");
    HWND const ok = ui.child(dialog, "BUTTON", 0, "OK");
    HWND const label = ui.child(dialog, "STATIC", 0, "Name:");
    HWND const other = ui.child(dialog, "BUTTON", 0, "Skip");
    EXPECT_EQ(XlateWnd(dialog), 3);
    EXPECT_EQ(ui.text(dialog), "Auftrag");
    EXPECT_EQ(ui.text(ok), "Gut");
    EXPECT_EQ(ui.text(label), "Name der Datei:");
    EXPECT_EQ(ui.text(other), "Skip");
    EXPECT_EQ(ui.sets(ok), 1);
    EXPECT_EQ(ui.sets(label), 1);
    EXPECT_EQ(ui.sets(other), 1) << "set also where nothing changed, on purpose";
}

TEST_F(XlateUi, ChildrenLeftAloneAreCounted)
{
    load("[a][x]");
    HWND const dialog = ui.dialog("a");
    for (const char* text : {"a", "b", ""})
        ui.child(dialog, "EDIT", 0, text);
    EXPECT_EQ(XlateWnd(dialog), 3);
    EXPECT_EQ(XlateWnd(ui.dialog("none")), 0);
}

TEST_F(XlateUi, ClassesOfControls)
{
    load("[a][x]");
    const struct
    {
        const char* class_name;
        const char* text;
        int sets;
    } cases[] = {
        {"BUTTON", "a", 1},
        {"Button", "a", 1},
        {"button", "a", 1},
        {"BUTTON", "", 0},
        {"COMBOBOX", "a", 0},
        {"ComboBox", "", 0},
        {"EDIT", "a", 0},
        {"Edit", "", 0},
        {"LISTBOX", "a", 0},
        {"ListBox", "", 0},
        {"STATIC", "a", 1},
        {"Static", "", 1},
        {"ButtonX", "a", 1},
        {"ButtonX", "", 1},
        {"Edits", "a", 1},
        {"StaticText", "a", 1},
        {"Own", "a", 1},
        {"Own", "", 1},
        {"Zlistbox", "a", 1},
        {"combo", "", 1},
        {"listboxlistboxlistboxlistboxlistbox", "a", 1},
    };
    for (const auto& row : cases)
        EXPECT_EQ(sets(row.class_name, 0, row.text), row.sets) << row.class_name << row.text;
}

TEST_F(XlateUi, StaticsOfEveryStyle)
{
    load("[a][x]");
    for (LONG style = 0; style < 32; ++style) {
        const bool picture = (style & 0xE) == 0xE || (style & 3) == 3;
        EXPECT_EQ(sets("STATIC", style, ""), picture ? 0 : 1) << style;
    }
    EXPECT_EQ(sets("STATIC", 3, ""), 0) << "an icon";
    EXPECT_EQ(sets("STATIC", 7, ""), 0);
    EXPECT_EQ(sets("STATIC", 14, ""), 0) << "a bitmap";
    EXPECT_EQ(sets("BUTTON", 3, "a"), 1) << "the style counts for statics only";
}

TEST_F(XlateUi, GrandchildrenAreLeftAlone)
{
    load("[a][x]");
    HWND const dialog = ui.dialog("top");
    HWND const page = ui.child(dialog, "Page", 0, "a");
    HWND const inner = ui.child(page, "BUTTON", 0, "a");
    EXPECT_EQ(XlateWnd(dialog), 1);
    EXPECT_EQ(ui.text(page), "x");
    EXPECT_EQ(ui.text(inner), "a");
    EXPECT_EQ(ui.sets(inner), 0);
    EXPECT_EQ(XlateWnd(page), 1) << "the host walks the page itself";
    EXPECT_EQ(ui.text(inner), "x");
}

TEST_F(XlateUi, ASecondWalkTranslatesTheTranslation)
{
    load("[a][b][b][c]");
    HWND const dialog = ui.dialog("a");
    HWND const child = ui.child(dialog, "BUTTON", 0, "a");
    XlateWnd(dialog);
    EXPECT_EQ(ui.text(child), "b");
    XlateWnd(dialog);
    EXPECT_EQ(ui.text(child), "c");
    EXPECT_EQ(ui.text(dialog), "c");
}

TEST_F(XlateUi, LineEndsGoThroughWindows)
{
    load("[one\\ntwo][eins\\r\\nzwei]");
    HWND const dialog = ui.dialog("top");
    HWND const child = ui.child(dialog, "STATIC", 0, "one\ntwo");
    XlateWnd(dialog);
    EXPECT_EQ(ui.text(child), "eins\\u000D\\u000Azwei");
}

// --- Menus.

TEST_F(XlateUi, ItemsOfAMenu)
{
    load("[Open@@Menu][Auf][Same][Same]");
    HMENU const menu = ui.menu();
    ui.item(menu, 100, "Open@@Menu");
    ui.item(menu, 101, "Same");
    ui.item(menu, 102, "Unknown");
    ui.item(menu, 103, "");
    ui.item(menu, 104, "Context@@x");
    EXPECT_EQ(XlateMenu(menu, nullptr), 0);
    EXPECT_EQ(ui.item_text(menu, 0), "Auf");
    EXPECT_EQ(ui.item_id(menu, 0), 100u);
    EXPECT_TRUE(ui.is_modified(menu, 0));
    for (const int position : {1, 2, 3})
        EXPECT_FALSE(ui.is_modified(menu, position)) << position;
    EXPECT_EQ(ui.item_text(menu, 4), "Context");
    EXPECT_EQ(ui.item_id(menu, 4), 104u);
}

TEST_F(XlateUi, SeparatorsBitmapsAndColumnsAreLeftAlone)
{
    load("[a][x]");
    HMENU const menu = ui.menu();
    ui.item(menu, 1, "a", separator);
    ui.item(menu, 2, "a", bitmap);
    ui.item(menu, 3, "a", column_break);
    ui.item(menu, 4, "a", bar_break);
    ui.item(menu, 5, "a");
    XlateMenu(menu, nullptr);
    for (int position = 0; position < 4; ++position)
        EXPECT_FALSE(ui.is_modified(menu, position)) << position;
    EXPECT_EQ(ui.item_text(menu, 2), "a");
    EXPECT_EQ(ui.item_text(menu, 3), "a");
    EXPECT_EQ(ui.item_text(menu, 4), "x");
}

TEST_F(XlateUi, PopupsAreVisitedOnlyIfTheirTitleChanged)
{
    load("[File][Datei][Open][Auf][Edit][Edit]");
    HMENU const menu = ui.menu(), file = ui.menu(), edit = ui.menu(), unknown = ui.menu();
    for (HMENU submenu : {file, edit, unknown})
        ui.item(submenu, 1, "Open");
    ui.popup(menu, file, "File");
    ui.popup(menu, edit, "Edit");
    ui.popup(menu, unknown, "View");
    EXPECT_EQ(XlateMenu(menu, nullptr), 0);
    EXPECT_EQ(ui.item_text(menu, 0), "Datei");
    EXPECT_EQ(ui.submenu(menu, 0), file) << "it stays a pop-up";
    EXPECT_EQ(ui.item_text(file, 0), "Auf");
    EXPECT_EQ(ui.item_text(edit, 0), "Open") << "its title is translated by itself";
    EXPECT_EQ(ui.item_text(unknown, 0), "Open");
    EXPECT_FALSE(ui.is_modified(menu, 1));
    EXPECT_FALSE(ui.is_modified(menu, 2));
}

TEST_F(XlateUi, AFunctionServesTheTopLevelOnly)
{
    load("[Open][Auf]");
    HMENU const menu = ui.menu(), file = ui.menu(), deeper = ui.menu();
    ui.item(deeper, 1, "Open");
    ui.item(file, 2, "Open");
    ui.popup(file, deeper, "Open");
    ui.popup(menu, file, "File");
    ui.item(menu, 3, "Open");
    EXPECT_EQ(XlateMenu(menu, in_angles), 0);
    EXPECT_EQ(ui.item_text(menu, 0), "<File>");
    EXPECT_EQ(ui.item_text(menu, 1), "<Open>");
    EXPECT_EQ(ui.item_text(file, 0), "Auf");
    EXPECT_EQ(ui.item_text(file, 1), "Auf");
    EXPECT_EQ(ui.item_text(deeper, 0), "Auf");
    HMENU const same = ui.menu();
    ui.item(same, 1, "Open");
    XlateMenu(same, unchanged);
    EXPECT_FALSE(ui.is_modified(same, 0));
}

// The system tells the number of a pop-up's items where it tells a separator.
TEST_F(XlateUi, PopupsOfEightToFifteenItemsPassForSeparators)
{
    load("[File][Datei]");
    for (const int items : {1, 7, 8, 15, 16, 23, 24}) {
        HMENU const menu = ui.menu(), file = ui.menu();
        for (int i = 0; i < items; ++i)
            ui.item(file, 1, "Open");
        ui.popup(menu, file, "File");
        XlateMenu(menu, nullptr);
        EXPECT_EQ(ui.item_text(menu, 0), (items & 8) != 0 ? "File" : "Datei") << items;
    }
}

TEST_F(XlateUi, MenuTextsAreReadUpTo254Units)
{
    std::string pairs;
    for (const int length : {253, 254, 255, 256})
        pairs += "[" + std::string(static_cast<size_t>(length), 'm') + "][" +
                 std::to_string(length) + "]";
    load(pairs);
    const struct
    {
        int length;
        const char* text;
    } cases[] = {{253, "253"}, {254, "254"}, {255, "254"}, {256, "254"}};
    for (const auto& row : cases) {
        HMENU const menu = ui.menu();
        ui.item(menu, 1, Wide('m', row.length));
        XlateMenu(menu, nullptr);
        EXPECT_EQ(ui.item_text(menu, 0), row.text) << row.length << ": read as far as 254";
    }
    // A text that is too long and has no translation stays whole.
    load("[a][x]");
    HMENU const menu = ui.menu();
    ui.item(menu, 1, Wide('n', 300));
    XlateMenu(menu, nullptr);
    EXPECT_EQ(ui.item_text(menu, 0), std::string(300, 'n'));
}
