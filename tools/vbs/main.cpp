// vbs FILE... [-- ARGUMENT...]: runs scripts one after another in one engine, with a WScript object
// that has Echo, Quit and Arguments.
//
// Exit status: what WScript.Quit gave, 1 after a script error, 2 when a file can't be read.

#include "automation/vbscript/arrays.h"
#include "automation/vbscript/convert.h"
#include "automation/vbscript/errors.h"
#include "automation/vbscript/member_table.h"
#include "automation/vbscript/vbscript.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <vector>

namespace {

using namespace zentrel::vbscript;

/// Thrown through the engine as an error that scripts can't handle.
constexpr int kQuitNumber = -1;

class WScript : public HostObject {
  public:
    explicit WScript(const std::vector<std::string>& arguments) {
        std::vector<Value> values;
        values.reserve(arguments.size());
        for (const auto& argument : arguments)
            values.push_back(Value::Utf8(argument));
        arguments_ = Value::FromArray(ArrayData::FromValues(values).get());
    }

    std::string_view ClassName() const override { return "Object"; }
    const void* MemberTable() const override { return kMembers; }
    std::optional<Member> FindMember(std::u16string_view name) const override {
        return FindRow(kMembers, name);
    }

    Value Get(int slot, Arguments args) override {
        switch (slot) {
        case kEcho:
            Echo(args);
            return {};
        case kQuit:
            Quit(args);
        case kArguments:
            return arguments_;
        default:
            return Value::String(u"WScript");
        }
    }

    int status = 0;

  private:
    enum Slot { kEcho, kQuit, kArguments, kName };
    static constexpr MemberRow kMembers[] = {{"Echo", kEcho, true},
                                             {"Quit", kQuit, true},
                                             {"Arguments", kArguments, false},
                                             {"Name", kName, false}};

    static void Echo(Arguments args) {
        std::string line;
        for (std::size_t i = 0; i < args.size(); ++i) {
            if (i > 0) line += ' ';
            line += ToText(args[i]).ToUtf8();
        }
        std::cout << line << '\n';
    }

    [[noreturn]] void Quit(Arguments args) {
        status = args.Has(0) ? ToLong(args[0]) : 0;
        ScriptError quit(kQuitNumber);
        quit.info.interrupted = true;
        throw quit;
    }

    Value arguments_;
};

Callbacks ConsoleCallbacks() {
    Callbacks callbacks;
    callbacks.message_box = [](std::string_view prompt, int, std::string_view) {
        std::cout << prompt << '\n';
        return 1;
    };
    callbacks.input_box = [](std::string_view prompt, std::string_view,
                             std::string_view) -> std::optional<std::string> {
        std::cout << prompt << ' ' << std::flush;
        std::string line;
        if (!std::getline(std::cin, line)) return std::nullopt;
        return line;
    };
    return callbacks;
}

void Report(const std::string& file, const ErrorInfo& error) {
    std::cerr << file << '(' << error.line << ", " << error.column << ") " << error.source << ": "
              << error.description << " (" << error.number << ")\n";
    if (!error.line_text.empty()) std::cerr << "    " << error.line_text << '\n';
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> files;
    std::vector<std::string> arguments;
    bool behind = false;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "--" && !behind)
            behind = true;
        else
            (behind ? arguments : files).push_back(word);
    }
    if (files.empty()) {
        std::cerr << "usage: vbs FILE... [-- ARGUMENT...]\n";
        return 2;
    }
    Engine engine(ConsoleCallbacks());
    const auto wscript = Make<WScript>(arguments);
    engine.AddObject("WScript", Handle<HostObject>(wscript));
    for (const auto& file : files) {
        std::ifstream in(file, std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(in)), {});
        if (!in) {
            std::cerr << file << ": can't be read\n";
            return 2;
        }
        try {
            engine.GlobalModule().AddCode(text);
        } catch (const ScriptError& error) {
            std::cout << std::flush;
            if (error.info.number == kQuitNumber && error.info.interrupted) return wscript->status;
            Report(file, error.info);
            return 1;
        }
    }
    return 0;
}
