#include "automation/vbscript/builtins.h"

#include "automation/vbscript/text.h"

#include <unordered_map>

namespace zentrel::vbscript {
namespace {

std::vector<BuiltinConstant> MakeConstants() {
    const auto text = [](std::u16string_view t) { return Value::String(t); };
    const auto integer = [](int number) { return Value::Integer(number); };
    std::vector<BuiltinConstant> rows = {
        {"vbCr", text(u"\r")},
        {"vbCrLf", text(u"\r\n")},
        {"vbFormFeed", text(u"\f")},
        {"vbLf", text(u"\n")},
        {"vbNewLine", text(u"\r\n")},
        {"vbNullChar", text(std::u16string_view(u"\0", 1))},
        {"vbNullString", text({})},
        {"vbTab", text(u"\t")},
        {"vbVerticalTab", text(u"\v")},
        {"vbObjectError", Value::Long(-2147221504)},
        {"vbBlack", Value::Long(0)},
        {"vbRed", Value::Long(0xFF)},
        {"vbGreen", Value::Long(0xFF00)},
        {"vbYellow", Value::Long(0xFFFF)},
        {"vbBlue", Value::Long(0xFF0000)},
        {"vbMagenta", Value::Long(0xFF00FF)},
        {"vbCyan", Value::Long(0xFFFF00)},
        {"vbWhite", Value::Long(0xFFFFFF)},
        {"vbMsgBoxRight", Value::Long(0x80000)},
        {"vbMsgBoxRtlReading", Value::Long(0x100000)},
        {"vbMsgBoxSetForeground", Value::Long(0x10000)},
    };
    constexpr std::pair<std::string_view, int> kIntegers[] = {
        {"vbBinaryCompare", 0},
        {"vbTextCompare", 1},
        {"vbDatabaseCompare", 2},
        {"vbUseSystem", 0},
        {"vbUseSystemDayOfWeek", 0},
        {"vbSunday", 1},
        {"vbMonday", 2},
        {"vbTuesday", 3},
        {"vbWednesday", 4},
        {"vbThursday", 5},
        {"vbFriday", 6},
        {"vbSaturday", 7},
        {"vbFirstJan1", 1},
        {"vbFirstFourDays", 2},
        {"vbFirstFullWeek", 3},
        {"vbGeneralDate", 0},
        {"vbLongDate", 1},
        {"vbShortDate", 2},
        {"vbLongTime", 3},
        {"vbShortTime", 4},
        {"vbOKOnly", 0},
        {"vbOKCancel", 1},
        {"vbAbortRetryIgnore", 2},
        {"vbYesNoCancel", 3},
        {"vbYesNo", 4},
        {"vbRetryCancel", 5},
        {"vbCritical", 16},
        {"vbQuestion", 32},
        {"vbExclamation", 48},
        {"vbInformation", 64},
        {"vbDefaultButton1", 0},
        {"vbDefaultButton2", 256},
        {"vbDefaultButton3", 512},
        {"vbDefaultButton4", 768},
        {"vbApplicationModal", 0},
        {"vbSystemModal", 4096},
        {"vbMsgBoxHelpButton", 16384},
        {"vbOK", 1},
        {"vbCancel", 2},
        {"vbAbort", 3},
        {"vbRetry", 4},
        {"vbIgnore", 5},
        {"vbYes", 6},
        {"vbNo", 7},
        {"vbUseDefault", -2},
        {"vbTrue", -1},
        {"vbFalse", 0},
        {"vbEmpty", 0},
        {"vbNull", 1},
        {"vbInteger", 2},
        {"vbLong", 3},
        {"vbSingle", 4},
        {"vbDouble", 5},
        {"vbCurrency", 6},
        {"vbDate", 7},
        {"vbString", 8},
        {"vbObject", 9},
        {"vbError", 10},
        {"vbBoolean", 11},
        {"vbVariant", 12},
        {"vbDataObject", 13},
        {"vbDecimal", 14},
        {"vbByte", 17},
        {"vbArray", 8192},
    };
    for (const auto& [name, number] : kIntegers)
        rows.push_back({name, integer(number)});
    return rows;
}

template<class Row>
using Index = std::unordered_map<std::u16string, const Row*>;

template<class Row>
void Enter(Index<Row>& index, std::span<const Row> rows) {
    for (const auto& row : rows)
        index[Lower(Widen(row.name))] = &row;
}

Index<Builtin> IndexFunctions() {
    Index<Builtin> index;
    for (const auto& family :
         {StringFunctions(), ConversionFunctions(), MathFunctions(), DateFunctions(),
          FormatFunctions(), ArrayFunctions(), InformationFunctions(), InteractionFunctions()})
        Enter(index, family);
    return index;
}

} // namespace

std::span<const BuiltinConstant> BuiltinConstants() {
    static const auto rows = MakeConstants();
    return rows;
}

const Builtin* FindBuiltin(std::u16string_view name) {
    static const auto index = IndexFunctions();
    const auto found = index.find(Lower(name));
    return found == index.end() ? nullptr : found->second;
}

const Value* FindBuiltinConstant(std::u16string_view name) {
    static const auto index = [] {
        Index<BuiltinConstant> made;
        Enter(made, BuiltinConstants());
        return made;
    }();
    const auto found = index.find(Lower(name));
    return found == index.end() ? nullptr : &found->second->value;
}

} // namespace zentrel::vbscript
