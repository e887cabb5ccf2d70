#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "device/number_text.h"
#include "device/text.h"
#include "partfile/catalogue.h"
#include "partfile/part_definition.h"

/// Every part file that goes out with the program: what it names is there, and each field that an
/// engineer meets says what it does.
namespace zentrel {
namespace {

class Lint {
  public:
    Lint(IniFiles& files, const std::string& file)
        : file_(std::filesystem::path(file).filename().string()),
          part_(ReadPartDefinition(files, file)) {
        for (const FieldEntry& field : part_.fields)
            fields_.push_back(field.name);
        for (const RegisterEntry& reg : part_.registers)
            registers_.push_back(reg.name);
        for (const PllEntry& pll : part_.plls)
            plls_.push_back(pll.name);
    }

    void Run() {
        for (const Problem& problem : part_.problems)
            ADD_FAILURE() << ProblemsMessage({problem});
        ASSERT_FALSE(part_.registers.empty()) << file_ << " has no registers";
        for (const FieldEntry& field : part_.fields)
            CheckField(field);
        for (const PllEntry& pll : part_.plls)
            CheckPll(pll);
        for (const ClkDistEntry& block : part_.clkDists)
            CheckBlock(block);
        for (const ScriptModule& module : part_.scripts)
            CheckModule(module);
    }

  private:
    using Names = std::vector<std::string>;

    void Fail(const std::string& section, const std::string& key, const std::string& entry,
              const std::string& why) const {
        ADD_FAILURE() << file_ << ", [" << section << "] " << key << ", entry " << entry << ": "
                      << why;
    }
    void Resolve(const Names& names, const std::string& section, const std::string& key,
                 const std::string& entry, const std::string& name) const {
        const bool found = std::any_of(names.begin(), names.end(), [&](const std::string& known) {
            return EqualNoCase(known, name);
        });
        if (!found) Fail(section, key, entry, "\"" + name + "\" isn't there");
    }
    void ResolveIfSet(const Names& names, const std::string& section, const std::string& key,
                      const std::string& entry, const std::string& name) const {
        if (!name.empty()) Resolve(names, section, key, entry, name);
    }

    void CheckField(const FieldEntry& field) const {
        const std::string nn = KeyNumber(field.entry);
        const auto fail = [&](const std::string& key, const std::string& why) {
            Fail("BITS", key + nn, field.name, why);
        };
        Resolve(registers_, "BITS", "REG" + nn, field.name, field.reg);
        ResolveIfSet(fields_, "BITS", "LINKEDBITS" + nn, field.name, field.linkedBits);
        ResolveIfSet(fields_, "BITS", "MIRRORBITS" + nn, field.name, field.mirrorBits);
        ResolveIfSet(fields_, "BITS", "GREATERBITS" + nn, field.name, field.greaterBits);
        ResolveIfSet(fields_, "BITS", "STEPVALUEBITNAME" + nn, field.name, field.stepValueBitName);
        if (field.repeatsName) fail("NAME", "the name stands before");
        if (field.position + field.length > part_.setup.registerLength) {
            fail("POS", "the field reaches beyond the word");
        }
        // Behind the head line, which every field gets by itself.
        const auto headEnd = field.description.find("\n\r");
        const bool told =
            headEnd != std::string::npos &&
            field.description.find_first_not_of("\r\n ", headEnd) != std::string::npos;
        if (field.display && !told) fail("DESCRIPTION", "a field that is shown has none");
        CheckCodes(field);
        CheckHooks(field);
        if (field.control == FieldControl::kList && field.strings.empty() && field.values.empty()) {
            fail("COUNT", "a list without entries");
        }
    }

    // What a list writes is cut to its largest entry.
    void CheckCodes(const FieldEntry& field) const {
        if (field.values.empty()) return;
        const double largest = *std::max_element(field.values.begin(), field.values.end());
        for (const std::string& text : field.strings) {
            const auto code = ParseFileNumber(text);
            if (!code || *code > largest) {
                Fail("BITS", "VALB" + KeyNumber(field.entry), field.name,
                     "code " + text + " can't be written");
            }
        }
        if (field.strings.empty() && static_cast<double>(field.values.size() - 1) > largest) {
            Fail("BITS", "VAL" + KeyNumber(field.entry), field.name,
                 "the last entries can't be selected");
        }
    }

    void CheckHooks(const FieldEntry& field) const {
        struct Hook {
            const char* key;
            const std::string& procedure;
        };
        for (const Hook& hook : {Hook{"script_on_load", field.scriptOnLoad},
                                 {"script_before_prog", field.scriptBeforeProg},
                                 {"script_after_prog", field.scriptAfterProg}}) {
            if (hook.procedure.empty()) continue;
            const std::string key = hook.key + KeyNumber(field.entry);
            if (!part_.executeScripts) Fail("BITS", key, field.name, "scripts are switched off");
            const auto module = std::find_if(
                part_.scripts.begin(), part_.scripts.end(), [&](const ScriptModule& candidate) {
                    return EqualNoCase(candidate.name, field.scriptName);
                });
            if (module == part_.scripts.end()) {
                Fail("BITS", key, field.name, "no module \"" + field.scriptName + "\"");
            } else if (module->Code().find("Sub " + hook.procedure + "\r\n") == std::string::npos) {
                Fail("BITS", key, field.name, "no procedure \"" + hook.procedure + "\"");
            }
        }
    }

    // A module that no field names and that isn't the load hook never runs.
    void CheckModule(const ScriptModule& module) const {
        const bool used =
            module.name == "Hook_CheckProgramRegister_LoadAll" ||
            std::any_of(part_.fields.begin(), part_.fields.end(), [&](const FieldEntry& field) {
                return EqualNoCase(field.scriptName, module.name);
            });
        if (!used) Fail("SCRIPTS", "SCRIPTNAME", module.name, "nothing uses it");
        if (module.Code().find("\r\n\r\n") != std::string::npos) {
            Fail("SCRIPTS", "SCRIPTLINES", module.name, "a line is missing");
        }
    }

    void CheckPll(const PllEntry& pll) const {
        const std::string nn = KeyNumber(pll.entry);
        struct Named {
            const char* key;
            const std::string& name;
        };
        for (const Named& counter : {Named{"N", pll.n}, {"R", pll.r}})
            Resolve(fields_, "PLLS", counter.key + nn, pll.name, counter.name);
        for (const Named& bound : {Named{"DOUBLER", pll.doubler},
                                   {"PD", pll.pd},
                                   {"IPO", pll.ipo},
                                   {"TRI", pll.tri},
                                   {"NP", pll.np},
                                   {"OSCBIT", pll.oscBit},
                                   {"FRACTNUM", pll.fractNum},
                                   {"FRACTDEN", pll.fractDen},
                                   {"OUT0_DIV", pll.out0Div},
                                   {"OUT1_DIV", pll.out1Div}}) {
            ResolveIfSet(fields_, "PLLS", bound.key + nn, pll.name, bound.name);
        }
    }

    void CheckBlock(const ClkDistEntry& block) const {
        const std::string nn = KeyNumber(block.entry);
        struct Named {
            const char* key;
            const std::string& name;
        };
        ResolveIfSet(plls_, "CLKDISTS", "PLL" + nn, block.name, block.pll);
        for (const Named& bound : {Named{"NDelay", block.nDelay},
                                   {"RDelay", block.rDelay},
                                   {"INPUT_DIV", block.inputDiv},
                                   {"INPUT_DIV_BYP", block.inputDivByp},
                                   {"INPUT_MUX", block.inputMux},
                                   {"LF_C3", block.lfC3},
                                   {"LF_R3", block.lfR3},
                                   {"LF_C4", block.lfC4},
                                   {"LF_R4", block.lfR4},
                                   {"LF_C3C4", block.lfC3C4}}) {
            ResolveIfSet(fields_, "CLKDISTS", bound.key + nn, block.name, bound.name);
        }
        int number = 0;
        for (const ClockChannel& channel : block.channels) {
            for (const Named& bound : {Named{"CLK_DIV_", channel.divider},
                                       {"CLK_DELAY_", channel.delay},
                                       {"CLK_MUX_", channel.mux},
                                       {"CLK_EN_", channel.enable}}) {
                Resolve(fields_, "CLKDISTS", TwoNumberKey(bound.key, block.entry, number),
                        block.name, bound.name);
            }
            ++number;
        }
    }

    std::string file_;
    PartDefinition part_;
    Names fields_, registers_, plls_;
};

const std::filesystem::path kParts = ZENTREL_SOURCE_DIR "/parts";

TEST(ShippedParts, name_only_what_is_there_and_describe_what_they_show) {
    IniFiles files{AppPath(kParts.string())};
    int linted = 0;
    for (const auto& entry : std::filesystem::directory_iterator(kParts)) {
        if (entry.path().extension() != ".ini" || entry.path().filename() == "zentrel.ini")
            continue;
        Lint(files, entry.path().string()).Run();
        ++linted;
    }
    EXPECT_GE(linted, 11);
}

TEST(ShippedParts, all_stand_in_the_catalogue_and_all_that_stand_there_are_shipped) {
    IniFiles files{AppPath(kParts.string())};
    std::set<std::string> listed;
    const Catalogue catalogue = ReadCatalogue(files);
    for (const auto& family : catalogue.items)
        listed.insert(family.begin(), family.end());
    std::set<std::string> shipped;
    for (const auto& entry : std::filesystem::directory_iterator(kParts))
        shipped.insert(entry.path().stem().string());
    shipped.erase("zentrel");
    EXPECT_EQ(listed, shipped);
    for (const std::string& device : catalogue.recent)
        EXPECT_TRUE(shipped.contains(device)) << device << " in the recent list";
}

} // namespace
} // namespace zentrel
