#include "session/part_loader.h"

#include <algorithm>

#include "device/number_text.h"
#include "session/frm_part.h"

namespace zentrel {

// The order of a load. The sections' own work stands in load_fields.cpp, load_blocks.cpp and
// load_scripts.cpp.

void PartLoader::Load(std::string& sPartName, bool familyGiven) {
    Begin(sPartName);
    try {
        Build();
        if (!LoadScripts()) {
            TellProblems();
            return;
        }
        Finish(familyGiven);
    } catch (...) {
        // The device stands as far as it got, and in sight.
        frm_.part.Updating = false;
        frm_.tabPart.Visible = true;
        TellProblems();
        throw;
    }
    TellProblems();
}

void PartLoader::Begin(std::string& sPartName) {
    frm_.session.bVCOFixed = frm_.menu("mnuVCOFixed").Checked;
    frm_.tabPart.Visible = false;
    frm_.session.bBitsAndPinsTabTooWide = false;
    frm_.CleanUp();

    frm_.part.Updating = true;
    frm_.part.ID = sPartName;
    frm_.StatusBar1.StatusBar_SetString("Loading " + sPartName + "...");
    frm_.Caption = sPartName;
    path_ = frm_.files.Folder().PartFilePath(sPartName);
    sPartName = path_.empty() ? frm_.files.Folder().Text() + sPartName + ".ini" : path_;
}

void PartLoader::Build() {
    const ReadScope scope(frm_.files);
    definition_ = LoadPartDefinition(frm_.files, path_);
    ApplySetup(definition_.setup);
    for (const PinEntry& pin : definition_.pins)
        AddPin(pin);
    for (const RegisterEntry& reg : definition_.registers)
        AddRegister(reg);
    for (const FieldEntry& field : definition_.fields)
        AddField(field);
    AddPLLs();
    AddClkDists();
    AddModes();
}

void PartLoader::AddModes() {
    for (std::size_t i = 0; i < definition_.modes.size(); ++i) {
        MenuNode& item = frm_.menu.MakeItem("mnuMode", static_cast<int>(i));
        item.Caption = definition_.modes[i];
        item.Visible = true;
    }
}

void PartLoader::Finish(bool familyGiven) {
    frm_.part.Updating = false;
    Late([this] { frm_.displays.UpdatePLLDisplay(); });
    Late([this] { frm_.displays.UpdateCLKDISTDisplay(); });
    Late([this] { frm_.displays.UpdateRegisterDisplay(); });
    Late([this] { frm_.displays.UpdateBitDisplay(); });
    Late([this] { frm_.displays.UpdatePortDisplay(); });
    if (familyGiven) frm_.burst.ShowElements();
    frm_.tabPart.Visible = true;
    if (!RunOnLoadHooks()) return;
    frm_.part.UpdateDisplays();
    frm_.StatusBar1.StatusBar_SetString("Selected device: " + frm_.part.ID);
}

bool PartLoader::RunOnLoadHooks() {
    const WordJournal& journal = frm_.part.journal();
    const auto device = journal.device();
    for (int i = 1; i <= std::min(definition_.fieldCount, frm_.part.PrgmBits.Count()); ++i) {
        const cPrgmBits& field = frm_.part.PrgmBits(i);
        if (field.script_on_load.empty()) continue;
        // Copies: the hook may take the field away.
        const std::string module = field.script_name, procedure = field.script_on_load;
        Late([&] { frm_.ExecuteScript(module, procedure); });
        if (journal.device() != device) return false;
    }
    return true;
}

void PartLoader::Late(const std::function<void()>& step) {
    if (!scriptsStand_) {
        step();
        return;
    }
    try {
        step();
    } catch (const Error&) {
        // The next step goes on; the refresh behind the hooks shows what stands.
    }
}

void PartLoader::Set(std::string_view section, std::string_view key, const std::string& value,
                     const std::function<void()>& setter, const std::string& used,
                     const std::function<void()>& fallback) {
    try {
        setter();
    } catch (const Error&) {
        Note(section, std::string(key), value, used);
        fallback();
    }
}

std::string PartLoader::Named(std::string_view section, std::string_view word, int entry,
                              const std::string& name) {
    if (!name.empty()) return name;
    std::string used = std::string(word) + KeyNumber(entry);
    Note(section, "NAME" + KeyNumber(entry), name, used);
    return used;
}

void PartLoader::Note(std::string_view section, std::string key, std::string value,
                      std::string used) {
    definition_.problems.push_back({frm_.files.RealPath(path_), std::string(section),
                                    std::move(key), std::move(value), std::move(used)});
}

void PartLoader::TellProblems() {
    std::string text = ProblemsMessage(definition_.problems);
    const std::string failures = WriteFailuresMessage(frm_.files.TakeWriteFailures());
    if (!text.empty() && !failures.empty()) text += "\r\n\r\n";
    text += failures;
    if (!text.empty()) frm_.messages.Show(text, {}, MessageIcon::Exclamation);
}

} // namespace zentrel
