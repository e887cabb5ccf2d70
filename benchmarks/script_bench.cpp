#include <benchmark/benchmark.h>

#include <lua.hpp>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "automation/script_host/script_host.h"
#include "session/frm_part.h"

/// What a hook costs: a call of an empty procedure through the host, against Lua 5.4 calling an
/// empty function by its name; and a script's read of `Part.PrgmBits("X").Value` through the whole
/// object model, against Lua reading the same model through metatables, and against C++.
namespace {

using namespace zentrel;

constexpr const char* kName = "QVX7002";
constexpr std::int64_t kReads = 1'000'000;

constexpr const char* kPart = "[SETUP]\nZENTREL_VERSION=2.3.0\nCOMM_MODE=LPT\nREGISTER_LENGTH=24\n"
                              "[REGISTERS]\nCOUNT=1\nNAME00=R0\nMASK00=3\nVALUE00=0\n"
                              "[BITS]\nCOUNT=2\n"
                              "NAME00=N_COUNTER\nREG00=R0\nPOS00=2\nLEN00=8\n"
                              "NAME01=X\nREG01=R0\nPOS01=10\nLEN01=8\n"
                              "[SCRIPTS]\nEXECUTE_SCRIPTS=True\nCOUNT=1\nSCRIPTNAME000=M\n"
                              "SCRIPTLINES000=8\n"
                              "M00000=Sub Idle\n"
                              "M00001=End Sub\n"
                              "M00002=Sub Read\n"
                              "M00003=Dim i, sum\n"
                              "M00004=For i = 1 To 1000000\n"
                              "M00005=sum = sum + Part.PrgmBits(\"X\").Value\n"
                              "M00006=Next\n"
                              "M00007=If sum <> 77000000 Then Err.Raise 5\n"
                              "M00008=End Sub\n";

constexpr const char* kLuaCode = R"(
function Idle() end
function Read()
  local sum = 0
  for i = 1, 1000000 do
    sum = sum + Part.PrgmBits("X").Value
  end
  if sum ~= 77000000 then error("sum") end
end)";

/// The program with one device that carries a script.
class Program {
  public:
    Program() {
        std::filesystem::create_directories(folder_);
        std::ofstream(folder_ / (std::string(kName) + ".ini"), std::ios::binary) << kPart;
        frm.Main();
        std::string name = kName;
        frm.SetupPartForm(name);
        part.PrgmBits("X").SetBitValue(77);
    }
    ~Program() { std::filesystem::remove_all(folder_); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

  private:
    std::filesystem::path folder_ = std::filesystem::temp_directory_path() / "zentrel_script_bench";

  public:
    Session session;
    cPart part{session};
    IniFiles files{AppPath(folder_.string())};
    Messages messages;
    FrmPart frm{part, files, messages};
    PartScripts scripts{frm};
};

/// Lua over the same model: `Part.PrgmBits` is a function that gives a userdata, whose `Value` a
/// metatable reads.
class Lua {
  public:
    explicit Lua(cPart& part) : state_(luaL_newstate()) {
        luaL_openlibs(state_);
        luaL_newmetatable(state_, "field");
        lua_pushcfunction(state_, [](lua_State* state) {
            auto* field = *static_cast<cPrgmBits**>(luaL_checkudata(state, 1, "field"));
            if (std::string_view(luaL_checkstring(state, 2)) != "Value") return 0;
            lua_pushnumber(state, field->Value());
            return 1;
        });
        lua_setfield(state_, -2, "__index");
        lua_newtable(state_);
        lua_pushlightuserdata(state_, &part);
        lua_pushcclosure(
            state_,
            [](lua_State* state) {
                auto* device = static_cast<cPart*>(lua_touserdata(state, lua_upvalueindex(1)));
                void* place = lua_newuserdatauv(state, sizeof(std::uintptr_t), 0);
                *static_cast<cPrgmBits**>(place) =
                    &device->PrgmBits(std::string_view(luaL_checkstring(state, 1)));
                luaL_setmetatable(state, "field");
                return 1;
            },
            1);
        lua_setfield(state_, -2, "PrgmBits");
        lua_setglobal(state_, "Part");
        Check(luaL_dostring(state_, kLuaCode));
    }
    ~Lua() { lua_close(state_); }
    Lua(const Lua&) = delete;
    Lua& operator=(const Lua&) = delete;

    void Run(const char* function) {
        lua_getglobal(state_, function);
        Check(lua_pcall(state_, 0, 0, 0));
    }

  private:
    void Check(int status) {
        if (status != LUA_OK) throw std::runtime_error(lua_tostring(state_, -1));
    }
    lua_State* state_;
};

void EmptyHook(benchmark::State& state) {
    Program program;
    for (auto _ : state)
        program.scripts.ExecuteScript("M", "Idle");
}
BENCHMARK(EmptyHook);

void EmptyHookYardstickLua(benchmark::State& state) {
    Program program;
    Lua lua(program.part);
    for (auto _ : state)
        lua.Run("Idle");
}
BENCHMARK(EmptyHookYardstickLua);

void FieldReadFromScript(benchmark::State& state) {
    Program program;
    for (auto _ : state)
        program.scripts.ExecuteScript("M", "Read");
    state.SetItemsProcessed(state.iterations() * kReads);
}
BENCHMARK(FieldReadFromScript)->Unit(benchmark::kMillisecond);

void FieldReadYardstickLua(benchmark::State& state) {
    Program program;
    Lua lua(program.part);
    for (auto _ : state)
        lua.Run("Read");
    state.SetItemsProcessed(state.iterations() * kReads);
}
BENCHMARK(FieldReadYardstickLua)->Unit(benchmark::kMillisecond);

void FieldReadYardstickCpp(benchmark::State& state) {
    Program program;
    for (auto _ : state) {
        double sum = 0;
        for (std::int64_t i = 0; i < kReads; ++i)
            sum += program.part.PrgmBits(std::string_view("X")).Value();
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * kReads);
}
BENCHMARK(FieldReadYardstickCpp)->Unit(benchmark::kMillisecond);

} // namespace
