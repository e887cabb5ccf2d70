// Runs every .vbs file of this folder and compares what it echoes with what its comments say.
//
//   WScript.Echo 1 + 1 ' -> 2          one line of output
//   x = 1 / 0 ' !! 11 Division by zero the run ends with this error on this line
//   ' == 3                             a line of output, anywhere

#include "automation/vbscript/arrays.h"
#include "automation/vbscript/convert.h"
#include "automation/vbscript/member_table.h"
#include "automation/vbscript/vbscript.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace zentrel::vbscript {
namespace {

/// Gathers what a script echoes.
class Recorder : public HostObject {
  public:
    std::string_view ClassName() const override { return "Object"; }
    const void* MemberTable() const override { return kMembers; }
    std::optional<Member> FindMember(std::u16string_view name) const override {
        return FindRow(kMembers, name);
    }
    Value Get(int, Arguments args) override {
        std::string line;
        for (std::size_t i = 0; i < args.size(); ++i)
            line.append(i > 0 ? 1 : 0, ' ').append(ToText(args[i]).ToUtf8());
        lines.push_back(line);
        return {};
    }
    std::vector<std::string> lines;

  private:
    static constexpr MemberRow kMembers[] = {{"Echo", 0, true}};
};

struct Expectation {
    std::vector<std::string> lines;
    std::string error; ///< "line: number description"
};

Expectation ReadExpectation(const std::string& text) {
    Expectation expected;
    std::istringstream in(text);
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
            line.pop_back();
        const auto behind = [&](std::string_view mark) -> std::optional<std::string> {
            const auto at = line.rfind(mark);
            if (at == std::string::npos) return std::nullopt;
            const auto rest = line.substr(at + mark.size());
            return rest.empty() ? rest : rest.substr(1);
        };
        if (const auto output = behind("' ->"))
            expected.lines.push_back(*output);
        else if (const auto more = behind("' =="))
            expected.lines.push_back(*more);
        else if (const auto error = behind("' !!"))
            expected.error = std::to_string(number).append(": ").append(*error);
    }
    return expected;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string all;
    for (const auto& line : lines)
        all += line + "\n";
    return all;
}

class ScriptFile : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(ScriptFile, echoes_what_its_comments_say) {
    std::ifstream in(GetParam(), std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(in)), {});
    const auto expected = ReadExpectation(text);
    ASSERT_FALSE(expected.lines.empty() && expected.error.empty()) << "nothing is expected";

    Callbacks callbacks;
    callbacks.now = [] { return 45292.75; }; // 1 January 2024, 6 in the evening
    Engine engine(callbacks);
    const auto recorder = Make<Recorder>();
    engine.AddObject("WScript", Handle<HostObject>(recorder));
    std::string error;
    try {
        engine.AddModule("Test").AddCode(text);
        engine.Reset(); // objects that still live end here and may echo
    } catch (const ScriptError& e) {
        error = std::to_string(e.info.line).append(": ");
        error.append(std::to_string(e.info.number)).append(1, ' ').append(e.info.description);
    }
    EXPECT_EQ(Joined(recorder->lines), Joined(expected.lines));
    EXPECT_EQ(error, expected.error);
}

std::vector<std::filesystem::path> Scripts() {
    std::vector<std::filesystem::path> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(
             std::filesystem::path(ZENTREL_SOURCE_DIR) / "tests" / "vbscript"))
        if (entry.path().extension() == ".vbs") found.push_back(entry.path());
    std::sort(found.begin(), found.end());
    return found;
}

INSTANTIATE_TEST_SUITE_P(All, ScriptFile, testing::ValuesIn(Scripts()), [](const auto& info) {
    auto name = info.param.parent_path().filename().string() + "_" + info.param.stem().string();
    for (auto& c : name)
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    return name;
});

} // namespace
} // namespace zentrel::vbscript
