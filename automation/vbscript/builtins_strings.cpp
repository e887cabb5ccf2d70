#include "automation/vbscript/builtin_arguments.h"
#include "automation/vbscript/text.h"

#include <algorithm>

namespace zentrel::vbscript {
namespace {

bool IsNullAt(const BuiltinCall& call, std::size_t index) {
    return call.Has(index) && Plain(call[index]).IsNull();
}

Value Len(BuiltinCall& call) {
    if (IsNullAt(call, 0)) return Value::Null();
    return Value::Long(static_cast<std::int64_t>(Text(call, 0).AsText().size()));
}

Value LenB(BuiltinCall& call) {
    if (IsNullAt(call, 0)) return Value::Null();
    return Value::Long(static_cast<std::int64_t>(Text(call, 0).AsText().size() * 2));
}

Value Left(BuiltinCall& call) {
    if (IsNullAt(call, 0)) return Value::Null();
    const auto text = Text(call, 0);
    return Value::String(text.AsText().substr(0, static_cast<std::size_t>(Number(call, 1, 0))));
}

Value Right(BuiltinCall& call) {
    if (IsNullAt(call, 0)) return Value::Null();
    const auto text = Text(call, 0);
    const auto count = std::min(static_cast<std::size_t>(Number(call, 1, 0)), text.AsText().size());
    return Value::String(text.AsText().substr(text.AsText().size() - count));
}

Value Mid(BuiltinCall& call) {
    if (IsNullAt(call, 0)) return Value::Null();
    const auto text = Text(call, 0);
    const auto start = static_cast<std::size_t>(Number(call, 1, 1)) - 1;
    const auto count = static_cast<std::size_t>(NumberOr(call, 2, 2147483647, 0));
    if (start >= text.AsText().size()) return Value::String({});
    return Value::String(text.AsText().substr(start, count));
}

/// InStr([start,] text, part[, compare])
Value InStr(BuiltinCall& call) {
    const std::size_t shift = call.size() >= 3 ? 1 : 0;
    const auto start = shift ? Number(call, 0, 1) : 1;
    const bool ignore_case = IgnoresCase(call, 3);
    if (IsNullAt(call, shift) || IsNullAt(call, shift + 1)) return Value::Null();
    const auto text = Text(call, shift);
    const auto part = Text(call, shift + 1);
    const auto from = static_cast<std::size_t>(start) - 1;
    if (text.AsText().empty() || from >= text.AsText().size()) return Value::Long(0);
    if (part.AsText().empty()) return Value::Long(start);
    const auto found = FindText(text.AsText(), part.AsText(), from, ignore_case);
    return Value::Long(found == std::u16string_view::npos ? 0
                                                          : static_cast<std::int64_t>(found) + 1);
}

/// InStrRev(text, part[, start[, compare]])
Value InStrRev(BuiltinCall& call) {
    if (IsNullAt(call, 0) || IsNullAt(call, 1)) return Value::Null();
    const auto text = Text(call, 0);
    const auto part = Text(call, 1);
    auto start = call.Has(2) ? ToLong(call[2]) : -1;
    if (start == 0 || start < -1) Raise(ErrorNumber::InvalidCall);
    const bool ignore_case = IgnoresCase(call, 3);
    const auto length = text.AsText().size();
    const auto end = start == -1 ? length : static_cast<std::size_t>(start);
    if (length == 0 || end > length) return Value::Long(0);
    if (part.AsText().empty()) return Value::Long(static_cast<std::int64_t>(end));
    if (part.AsText().size() > end) return Value::Long(0);
    for (auto at = end - part.AsText().size() + 1; at-- > 0;)
        if (CompareText(text.AsText().substr(at, part.AsText().size()), part.AsText(),
                        ignore_case) == 0)
            return Value::Long(static_cast<std::int64_t>(at) + 1);
    return Value::Long(0);
}

template<char16_t (*Map)(char16_t)>
Value MapCase(BuiltinCall& call) {
    if (IsNullAt(call, 0)) return Value::Null();
    std::u16string text(Text(call, 0).AsText());
    for (auto& c : text)
        c = Map(c);
    return Value::String(text);
}

std::u16string_view TrimBlanks(std::u16string_view text, bool left, bool right) {
    while (left && !text.empty() && text.front() == u' ')
        text.remove_prefix(1);
    while (right && !text.empty() && text.back() == u' ')
        text.remove_suffix(1);
    return text;
}

template<bool IsLeft, bool IsRight>
Value Trim(BuiltinCall& call) {
    if (IsNullAt(call, 0)) return Value::Null();
    const auto text = Text(call, 0);
    return Value::String(TrimBlanks(text.AsText(), IsLeft, IsRight));
}

Value Repeated(std::int32_t count, char16_t unit) {
    if (static_cast<std::size_t>(count) > kMaxStringLength) Raise(ErrorNumber::OutOfMemory);
    if (count == 0) return Value::String({});
    auto* data = StringData::New(static_cast<std::size_t>(count), static_cast<std::size_t>(count));
    std::fill_n(data->Chars(), count, unit);
    return Value::Adopt(data);
}

Value Space(BuiltinCall& call) {
    return Repeated(Number(call, 0, 0), u' ');
}

/// String(count, character): the first of a text, or a code.
Value StringOf(BuiltinCall& call) {
    const auto count = Number(call, 0, 0);
    const auto what = Plain(call[1]);
    if (what.IsNull()) return Value::Null();
    if (!what.IsString()) return Repeated(count, static_cast<char16_t>(ToLong(what) & 0xFFFF));
    if (what.AsText().empty()) Raise(ErrorNumber::InvalidCall);
    return Repeated(count, what.AsText().front());
}

Value StrReverse(BuiltinCall& call) {
    std::u16string text(Text(call, 0).AsText());
    std::reverse(text.begin(), text.end());
    return Value::String(text);
}

Value StrComp(BuiltinCall& call) {
    const bool ignore_case = IgnoresCase(call, 2);
    if (IsNullAt(call, 0) || IsNullAt(call, 1)) return Value::Null();
    const auto left = Text(call, 0);
    const auto right = Text(call, 1);
    const int order = CompareText(left.AsText(), right.AsText(), ignore_case);
    return Value::Integer(order < 0 ? -1 : order > 0 ? 1 : 0);
}

/// Replace(text, find, with[, start[, count[, compare]]]): what lies before start is cut off.
Value Replace(BuiltinCall& call) {
    const auto text = Text(call, 0);
    const auto find = Text(call, 1);
    const auto with = Text(call, 2);
    const auto start = static_cast<std::size_t>(NumberOr(call, 3, 1, 1)) - 1;
    auto left = NumberOr(call, 4, -1, -1);
    const bool ignore_case = IgnoresCase(call, 5);
    if (start > text.AsText().size()) return Value::String({});
    const auto source = text.AsText().substr(start);
    if (find.AsText().empty()) return Value::String(source);
    Value result = Value::String({});
    std::size_t at = 0;
    for (; left != 0; --left) {
        const auto found = FindText(source, find.AsText(), at, ignore_case);
        if (found == std::u16string_view::npos) break;
        result.Append(source.substr(at, found - at));
        result.Append(with.AsText());
        at = found + find.AsText().size();
    }
    result.Append(source.substr(at));
    return result;
}

Value Asc(BuiltinCall& call) {
    const auto text = Text(call, 0);
    if (text.AsText().empty()) Raise(ErrorNumber::InvalidCall);
    return Value::Integer(static_cast<std::int16_t>(text.AsText().front()));
}

Value Chr(BuiltinCall& call) {
    const auto code = Number(call, 0, 0, 255);
    const auto unit = static_cast<char16_t>(code);
    return Value::String({&unit, 1});
}

Value ChrW(BuiltinCall& call) {
    const auto code = Number(call, 0, -32768, 65535);
    const auto unit = static_cast<char16_t>(code & 0xFFFF);
    return Value::String({&unit, 1});
}

constexpr Builtin kFunctions[] = {
    {"Asc", 1, 1, Asc},
    {"AscW", 1, 1, Asc},
    {"Chr", 1, 1, Chr},
    {"ChrW", 1, 1, ChrW},
    {"InStr", 2, 4, InStr},
    {"InStrRev", 2, 4, InStrRev},
    {"LCase", 1, 1, MapCase<Lower>},
    {"Left", 2, 2, Left},
    {"Len", 1, 1, Len},
    {"LenB", 1, 1, LenB},
    {"LTrim", 1, 1, Trim<true, false>},
    {"Mid", 2, 3, Mid},
    {"Replace", 3, 6, Replace},
    {"Right", 2, 2, Right},
    {"RTrim", 1, 1, Trim<false, true>},
    {"Space", 1, 1, Space},
    {"StrComp", 2, 3, StrComp},
    {"String", 2, 2, StringOf},
    {"StrReverse", 1, 1, StrReverse},
    {"Trim", 1, 1, Trim<true, true>},
    {"UCase", 1, 1, MapCase<Upper>},
};

} // namespace

std::span<const Builtin> StringFunctions() {
    return kFunctions;
}

} // namespace zentrel::vbscript
