// The interpreter beside Lua 5.4 in one run: the same work in both languages, the best of several
// rounds each, and what crossing into and out of a script costs. Exit status 1 when a limit is
// passed.

#include "automation/vbscript/member_table.h"
#include "automation/vbscript/vbscript.h"

#include <lua.hpp>

#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <unordered_map>

namespace {

using namespace zentrel::vbscript;

constexpr int kRounds = 5;
constexpr double kMostTimesLua = 3.0;

double Best(const std::function<void()>& work) {
    double best = 1e9;
    for (int i = 0; i < kRounds; ++i) {
        // Processor time: what else the machine does doesn't count.
        const auto begin = std::clock();
        work();
        const double time = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
        best = std::min(best, time);
    }
    return best;
}

struct Pair {
    const char* name;
    const char* vbs; ///< defines Sub Work
    const char* lua; ///< defines function work
};

constexpr Pair kPairs[] = {
    {"10 million additions and compares", R"(
Sub Work
  Dim i, n, limit : limit = 20000000
  For i = 1 To 10000000
    If n < limit Then n = n + 1
  Next
End Sub)",
     R"(
function work()
  local n, limit = 0, 20000000
  for i = 1, 10000000 do
    if n < limit then n = n + 1 end
  end
end)"},
    {"a string of 1 MB, piece by piece", R"(
Sub Work
  Dim i, s
  For i = 1 To 100000
    s = s & "0123456789"
  Next
  If Len(s) <> 1000000 Then Err.Raise 5
End Sub)",
     R"(
function work()
  local t = {}
  for i = 1, 100000 do
    t[#t + 1] = "0123456789"
  end
  if #table.concat(t) ~= 1000000 then error("length") end
end)"},
    {"1 million procedure calls", R"(
Function Add(a, b)
  Add = a + b
End Function
Sub Work
  Dim i, n : n = 0
  For i = 1 To 1000000
    n = Add(n, 1)
  Next
End Sub)",
     R"(
local function add(a, b)
  return a + b
end
function work()
  local n = 0
  for i = 1, 1000000 do
    n = add(n, 1)
  end
end)"},
    {"a quicksort of 100,000 doubles", R"(
Sub Sort(a, ByVal low, ByVal high)
  Dim i, j, pivot, t
  Do While low < high
    i = low : j = high : pivot = a((low + high) \ 2)
    Do While i <= j
      Do While a(i) < pivot : i = i + 1 : Loop
      Do While a(j) > pivot : j = j - 1 : Loop
      If i <= j Then
        t = a(i) : a(i) = a(j) : a(j) = t
        i = i + 1 : j = j - 1
      End If
    Loop
    Sort a, low, j
    low = i
  Loop
End Sub
Sub Work
  Dim a(), i, x : x = 12345.0
  ReDim a(99999)
  For i = 0 To 99999
    x = x * 16807.0
    x = x - Int(x / 2147483647.0) * 2147483647.0
    a(i) = x / 2147483647.0
  Next
  Sort a, 0, 99999
  For i = 1 To 99999
    If a(i - 1) > a(i) Then Err.Raise 5
  Next
End Sub)",
     R"(
local function sort(a, low, high)
  while low < high do
    local i, j, pivot = low, high, a[(low + high) // 2]
    while i <= j do
      while a[i] < pivot do i = i + 1 end
      while a[j] > pivot do j = j - 1 end
      if i <= j then
        a[i], a[j] = a[j], a[i]
        i = i + 1
        j = j - 1
      end
    end
    sort(a, low, j)
    low = i
  end
end
function work()
  local a, x = {}, 12345.0
  for i = 1, 100000 do
    x = x * 16807.0
    x = x - math.floor(x / 2147483647.0) * 2147483647.0
    a[i] = x / 2147483647.0
  end
  sort(a, 1, 100000)
  for i = 2, 100000 do
    if a[i - 1] > a[i] then error("order") end
  end
end)"},
};

double TimeOfLua(const char* code) {
    lua_State* state = luaL_newstate();
    luaL_openlibs(state);
    if (luaL_dostring(state, code) != LUA_OK) std::printf("%s\n", lua_tostring(state, -1));
    const double time = Best([&] {
        lua_getglobal(state, "work");
        if (lua_pcall(state, 0, 0, 0) != LUA_OK) std::printf("%s\n", lua_tostring(state, -1));
    });
    lua_close(state);
    return time;
}

double TimeOfScript(const char* code) {
    Engine engine;
    auto& module = engine.AddModule("Bench");
    module.AddCode(code);
    return Best([&] { module.Run("Work"); });
}

// --- a host like the program's own: a part with fields found by name ---

class Field : public HostObject {
  public:
    std::string_view ClassName() const override { return "cPrgmBits"; }
    const void* MemberTable() const override { return kMembers; }
    std::optional<Member> FindMember(std::u16string_view name) const override {
        return FindRow(kMembers, name);
    }
    Value Get(int, Arguments) override { return Value::Long(value_); }
    void Set(int, Arguments, const Value& value) override { value_ = value.AsInteger(); }

  private:
    static constexpr MemberRow kMembers[] = {{"Value", 0, false}};
    std::int64_t value_ = 42;
};

class Fields : public HostObject {
  public:
    Fields() {
        for (int i = 0; i < 100; ++i)
            items_[Name(i)] = Make<Field>();
    }
    std::string_view ClassName() const override { return "Collection"; }
    const void* MemberTable() const override { return kMembers; }
    std::optional<Member> FindMember(std::u16string_view name) const override {
        return FindRow(kMembers, name);
    }
    std::optional<Member> DefaultMember() const override { return Member{0, true}; }
    Value Get(int, Arguments args) override {
        const auto found = items_.find(std::u16string(args[0].AsText()));
        if (found == items_.end()) throw ScriptError(5);
        return Value::FromObject(found->second);
    }

  private:
    static constexpr MemberRow kMembers[] = {{"Item", 0, true}};
    static std::u16string Name(int i) {
        std::u16string name = u"FIELD";
        for (const char c : std::to_string(i))
            name += static_cast<char16_t>(c);
        return name;
    }
    std::unordered_map<std::u16string, Handle<Field>> items_;
};

class Part : public HostObject {
  public:
    std::string_view ClassName() const override { return "cPart"; }
    const void* MemberTable() const override { return kMembers; }
    std::optional<Member> FindMember(std::u16string_view name) const override {
        return FindRow(kMembers, name);
    }
    Value Get(int, Arguments) override { return Value::FromObject(fields_); }

  private:
    static constexpr MemberRow kMembers[] = {{"PrgmBits", 0, false}};
    Handle<Fields> fields_ = Make<Fields>();
};

bool Tell(const char* what, double nanoseconds, double most) {
    const bool good = nanoseconds < most;
    std::printf("%-40s %8.0f ns   (at most %.0f ns) %s\n", what, nanoseconds, most,
                good ? "" : "TOO SLOW");
    return good;
}

bool HookCall() {
    Engine engine;
    auto& module = engine.AddModule("Hooks");
    module.AddCode("Sub Hook : End Sub");
    constexpr int kCalls = 100000;
    const double time = Best([&] {
        for (int i = 0; i < kCalls; ++i)
            module.Run("Hook");
    });
    return Tell("a call of an empty procedure from C++", time / kCalls * 1e9, 500);
}

bool HostRead() {
    Engine engine;
    engine.AddObject("Part", Handle<HostObject>(Make<Part>()));
    auto& module = engine.AddModule("Reads");
    module.AddCode(R"(
Sub Read
  Dim i, x
  For i = 1 To 1000000
    x = Part.PrgmBits("FIELD50").Value
  Next
End Sub)");
    const double time = Best([&] { module.Run("Read"); });
    return Tell("Part.PrgmBits(\"X\").Value from a script", time / 1e6 * 1e9, 400);
}

} // namespace

int main() {
    bool good = true;
    for (const auto& pair : kPairs) {
        const double lua = TimeOfLua(pair.lua);
        const double vbs = TimeOfScript(pair.vbs);
        const double ratio = vbs / lua;
        std::printf("%-40s %8.2f ms   Lua %8.2f ms   %.2f times %s\n", pair.name, vbs * 1e3,
                    lua * 1e3, ratio, ratio <= kMostTimesLua ? "" : "TOO SLOW");
        good = good && ratio <= kMostTimesLua;
    }
    good = HookCall() && good;
    good = HostRead() && good;
    return good ? 0 : 1;
}
