#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "automation/object_model/classes.h"
#include "automation/vbscript/vbscript.h"
#include "tests/script_host/scripted.h"

/// docs/scripting.md and docs/object-model.md hold what they promise: scripts on the page run with
/// the result that stands beside them, excerpts stand in the shipped files, and the lists of
/// members are those of the classes.
namespace zentrel {
namespace {

using scripted::Program;

const std::filesystem::path kDocs = ZENTREL_SOURCE_DIR "/docs";
const std::filesystem::path kParts = ZENTREL_SOURCE_DIR "/parts";

std::string Read(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A fenced block of the page: "```vbs QVX2691" up to "```".
struct Block {
    std::string language, device;
    std::vector<std::string> lines;
    int line = 0; ///< Of the page.
};

std::vector<Block> BlocksOf(const std::string& page) {
    std::vector<Block> blocks;
    std::istringstream stream(page);
    std::string line;
    bool inside = false;
    for (int number = 1; std::getline(stream, line); ++number) {
        if (line.rfind("```", 0) != 0) {
            if (inside) blocks.back().lines.push_back(line);
            continue;
        }
        inside = !inside;
        if (!inside) continue;
        Block block;
        std::istringstream(line.substr(3)) >> block.language >> block.device;
        block.line = number;
        blocks.push_back(std::move(block));
    }
    return blocks;
}

std::vector<std::string> Promised(const Block& block) {
    constexpr std::string_view kArrow = "' -> ";
    std::vector<std::string> promised;
    for (const std::string& line : block.lines) {
        const auto at = line.find(kArrow);
        if (at != std::string::npos) promised.push_back(line.substr(at + kArrow.size()));
    }
    return promised;
}

/// Loads the device with the block as its only script, and gives what it showed.
std::vector<std::string> Shown(const Block& block) {
    Program program;
    std::string file = Read(kParts / (block.device + ".ini"));
    file.resize(file.find("[SCRIPTS]"));
    std::string code;
    for (const std::string& line : block.lines)
        code += line + "\n";
    program.folder.Write(block.device + ".ini",
                         file + "[SCRIPTS]\nEXECUTE_SCRIPTS=True\nCOUNT=1\n" +
                             scripted::Module(0, "Page", "Sub Example\n" + code + "End Sub"));
    std::string name = block.device;
    program.frm.SetupPartForm(name);
    program.boxes.answer = kMsgYes;
    program.frm.guard.Run([&] { program.scripts.ExecuteScript("Page", "Example"); });
    return program.boxes.shown;
}

TEST(ScriptingPage, every_script_on_it_shows_what_stands_beside_it) {
    int run = 0;
    for (const Block& block : BlocksOf(Read(kDocs / "scripting.md"))) {
        if (block.language != "vbs") continue;
        EXPECT_EQ(Shown(block), Promised(block)) << "docs/scripting.md:" << block.line;
        ++run;
    }
    EXPECT_GE(run, 8);
}

TEST(ScriptingPage, every_excerpt_stands_in_the_file_that_it_names) {
    int compared = 0;
    for (const Block& block : BlocksOf(Read(kDocs / "scripting.md"))) {
        if (block.language != "ini") continue;
        const std::string file = Read(kParts / (block.device + ".ini"));
        for (const std::string& line : block.lines) {
            EXPECT_NE(file.find("\n" + line + "\n"), std::string::npos)
                << "docs/scripting.md:" << block.line << ": " << line;
            ++compared;
        }
    }
    EXPECT_GE(compared, 15);
}

TEST(ScriptingPage, quotes_the_message_of_a_failing_hook) {
    Program program;
    std::string file = Read(kParts / "QVX2874.ini");
    const std::string sound = "Part.Registers(\"R1\").Change";
    file.replace(file.find(sound), sound.size(), "Part.Registers(\"R9\").Change");
    program.folder.Write("QVX2874.ini", file);
    std::string name = "QVX2874";
    program.frm.SetupPartForm(name);
    program.frm.guard.Run([&] { program.part.PrgmBits("ORDER").SetBitValue(3); });
    ASSERT_EQ(program.boxes.shown.size(), 1U);
    std::istringstream message(program.boxes.shown[0]);
    std::string quoted;
    for (std::string line; std::getline(message, line);)
        quoted += "    " + line + "\n";
    EXPECT_NE(Read(kDocs / "scripting.md").find(quoted), std::string::npos) << quoted;
}

// --- the lists of members ---

std::string_view TypeText(objects::Type type) {
    using objects::Type;
    switch (type) {
    case Type::Boolean:
        return "truth value";
    case Type::Integer16:
        return "16-bit number";
    case Type::Integer32:
        return "32-bit number";
    case Type::Double:
        return "number";
    case Type::Text:
        return "text";
    case Type::Object:
        return "object";
    case Type::Doubles:
        return "numbers";
    case Type::Texts:
        return "texts";
    case Type::Any:
        return "any";
    case Type::None:
        break;
    }
    return "";
}

// "SetBits(bits, Position, Bitlength, [inv])": brackets where it may be left out, & where it comes
// back changed.
std::string Signature(const objects::Member& member) {
    std::string text(member.name);
    if (member.kind == objects::Member::Kind::Property && member.parameters.empty()) return text;
    text += "(";
    for (const objects::Parameter& parameter : member.parameters) {
        if (text.back() != '(') text += ", ";
        const std::string name = (parameter.byReference ? "&" : "") + std::string(parameter.name);
        text += parameter.optional ? "[" + name + "]" : name;
    }
    return text + ")";
}

std::string Line(const objects::Member& member) {
    constexpr std::size_t kColumn = 44;
    std::string line = Signature(member);
    std::string gives(member.gives ? member.gives()->name() : TypeText(member.type));
    const bool property = member.kind == objects::Member::Kind::Property;
    if (property && !member.write) gives += ", read only";
    if (property && !member.read) gives += ", write only";
    if (gives.empty()) return line;
    line.resize(std::max(kColumn, line.size() + 1), ' ');
    return line + gives;
}

std::vector<std::string> Lines(const objects::ClassTable& table) {
    std::vector<std::string> lines;
    for (const objects::Member& member : table.members()) {
        // Screen elements share one way to be found; the page tells them as a whole.
        if (member.detail == nullptr) lines.push_back(Line(member));
    }
    return lines;
}

// The block is labelled with its class: "```members cPart".
TEST(MembersPage, lists_the_members_of_each_class) {
    const std::vector<const objects::ClassTable*> classes{objects::ClassOf<cPart>(),
                                                          objects::ClassOf<cRegister>(),
                                                          objects::ClassOf<cPrgmBits>(),
                                                          objects::ClassOf<cPrgmPin>(),
                                                          objects::ClassOf<cPLL>(),
                                                          objects::ClassOf<cClkDist>(),
                                                          objects::ClassOf<cBurst>(),
                                                          objects::ClassOf<FrmPart>(),
                                                          objects::CollectionOf<std::string>()};
    const auto path = kDocs / "object-model.md";
    const auto blocks = BlocksOf(Read(path));
    for (const objects::ClassTable* table : classes) {
        const auto found = std::find_if(blocks.begin(), blocks.end(), [&](const Block& block) {
            return block.device == table->name();
        });
        if (found == blocks.end()) {
            ADD_FAILURE() << table->name() << " isn't on the page";
            continue;
        }
        EXPECT_EQ(found->lines, Lines(*table)) << [&] {
            std::string text = "the list of " + std::string(table->name()) + " is now:\n";
            for (const std::string& line : Lines(*table))
                text += line + "\n";
            return text;
        }();
    }
}

} // namespace
} // namespace zentrel
