#include "automation/application/application.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "automation/application/window_frame.h"
#include "device/bit_string.h"
#include "device/number_text.h"
#include "device/text.h"
#include "synth/clock_link.h"
#include "synth/frequency_entry.h"
#include "synth/pll.h"
#include "transport/load_path.h"
#include "transport/readback.h"
#include "transport/usb_bridge.h"

namespace zentrel {
namespace {

constexpr std::string_view kVersion = "Zentrel 4.2";
constexpr std::string_view kNoBlock = "-1";
constexpr std::string_view kAutoReload = "mnuAutoReloadChange";
constexpr std::string_view kSaveSettings = "mnuSaveDeviceSettings";
constexpr int kUsbOption = 0;
constexpr int kLptOption = 1;
constexpr int kSlowestSpi = 255;

// A name alone lies in the program's folder.
void PutIntoFolder(const FrmPart& frm, std::string& name) {
    if (name.find_first_of("\\/") == std::string::npos) {
        name.insert(0, frm.files.Folder().Text());
    }
}

} // namespace

void Application::Refresh() {
    part_.UpdateDisplays();
    if (part_.upward().options->AutoReloadWithChanges()) LoadChanges(part_);
}

// A hook that fails leaves the words changed, so the screens follow them all the same.
template<typename Change>
void Application::Apply(Change change) {
    try {
        change();
    } catch (const ScriptFailure&) {
        part_.UpdateDisplays();
        throw;
    }
    Refresh();
}

cPLL* Application::PllNamed(std::string_view id) const {
    for (cPLL& pll : part_.PLLs) {
        if (pll.ID() == id) return &pll;
    }
    return nullptr;
}

cClkDist* Application::BlockNamed(std::string_view id) const {
    for (cClkDist& block : part_.ClkDists) {
        if (block.ID() == id) return &block;
    }
    return nullptr;
}

std::string Application::GetVersionID() const {
    return std::string(kVersion);
}

bool Application::CheckBit() {
    frm_.messages.Show("hi");
    return false;
}

void Application::SetPDFrequency(std::string_view sPLL, double dFreq) {
    Apply([&] { part_.PLLs(sPLL).SetPDFrequency(dFreq); });
}

std::string Application::GetPDFrequency(std::string_view sPLL) const {
    return NumberToText(part_.PLLs(sPLL).PDFrequency());
}

void Application::SetPrgmBits(std::string_view sPrgmBits, double iValue) {
    Apply([&] { part_.PrgmBits(sPrgmBits).SetBitValue(iValue); });
}

std::int32_t Application::GetPrgmBits(std::string_view sPrgmBits) const {
    return RoundToLong(part_.PrgmBits(sPrgmBits).BitValue());
}

void Application::SetPrgmBitValue(std::string_view sPrgmBits, double iValue) {
    Apply([&] {
        cPrgmBits& field = part_.PrgmBits(sPrgmBits);
        field.SetValue(RoundToLong(std::floor(iValue + 0.5)));
    });
}

std::int32_t Application::GetPrgmBitValue(std::string_view sPrgmBits) const {
    return RoundToLong(part_.PrgmBits(sPrgmBits).Value());
}

void Application::SetPrgmBitsText(std::string_view sPrgmBits, std::string_view sValue) {
    Apply([&] { part_.PrgmBits(sPrgmBits).SetValueText(sValue); });
}

std::string Application::GetPrgmBitsText(std::string_view sPrgmBits) const {
    return part_.PrgmBits(sPrgmBits).GetValueText();
}

void Application::SetPrgmPins(std::string_view sPrgmPins, bool bValue, bool bUpdate) {
    part_.PrgmPins(sPrgmPins).SetEnabled(bValue);
    if (!bUpdate) return;
    part_.UpdateDisplays();
    UpdateOutputPins(part_);
}

bool Application::GetPrgmPins(std::string_view sPrgmPins) const {
    return part_.PrgmPins(sPrgmPins).Enabled();
}

void Application::SetNValue(std::string_view sPLL, double dNval) {
    cPLL* pll = GetPLLfromCaption(part_, sPLL);
    if (pll == nullptr) return;
    pll->panel.txtNCounter.Text = NumberToText(dNval);
    txtNCounter_Enter(part_, pll->IDnum());
}

void Application::SetVCOFrequency(std::string_view sPLL, double dFreq) {
    int position = 0;
    for (const cPLL& pll : part_.PLLs) {
        ++position;
        if (pll.ID() != sPLL) continue;
        Apply([&] { VCOFrequencySetValue(part_, position, dFreq); });
        return;
    }
}

double Application::GetVCOFrequency(std::string_view sPLL) const {
    return part_.PLLs(sPLL).VCOFrequency();
}

void Application::SetOUT0Frequency(std::string_view sPLL, double dFreq) {
    Apply([&] { part_.PLLs(sPLL).SetOUT0_Freq(dFreq); });
}

double Application::GetOUT0Frequency(std::string_view sPLL) const {
    return part_.PLLs(sPLL).OUT0_Freq();
}

void Application::SetOUT1Frequency(std::string_view sPLL, double dFreq) {
    Apply([&] { part_.PLLs(sPLL).SetOUT1_Freq(dFreq); });
}

double Application::GetOUT1Frequency(std::string_view sPLL) const {
    return part_.PLLs(sPLL).OUT1_Freq();
}

void Application::SetOSCinFrequency(std::string_view sPLL, double dFreq) {
    int position = 0;
    for (const cPLL& pll : part_.PLLs) {
        ++position;
        if (pll.panel.txtOsc.Tag != sPLL) continue;
        Apply([&] { OSCinFrequencySetValue(part_, dFreq, position); });
        return;
    }
}

double Application::GetOSCinFrequency(std::string_view sPLL) const {
    return part_.PLLs(sPLL).XtalFrequency();
}

void Application::SetExternalSourceFrequency(std::string_view sCLKDIST, double dFreq) {
    if (cClkDist* block = BlockNamed(sCLKDIST)) block->SetExtSRC_Freq(dFreq);
    part_.UpdateDisplays();
}

double Application::GetExternalSourceFrequency(std::string_view sCLKDIST) const {
    const cClkDist* block = BlockNamed(sCLKDIST);
    return block == nullptr ? -1 : block->ExtSRC_Freq();
}

std::string Application::GetLinkedPLL(std::string_view sCLKDIST) const {
    const cClkDist* block = BlockNamed(sCLKDIST);
    return block == nullptr ? std::string(kNoBlock) : block->LinkedPLLName();
}

void Application::LoadPart() {
    LoadAll(part_);
}

void Application::LoadReg(std::int16_t Index) {
    if (Index == std::numeric_limits<std::int16_t>::max()) throw Overflow("register number");
    LoadRegisterNumber(part_, static_cast<std::int16_t>(Index + 1));
}

double Application::ReadQVX4100Register(std::string_view sRegister) {
    return ReverseDataBits(RoundToLong(QVX4100ReadRegister(part_, sRegister)),
                           part_.RegisterLength() - part_.ControlLength);
}

double Application::ReadRegisterRaw(std::string_view sRegister) {
    return QVX4100ReadRegister(part_, sRegister);
}

double Application::ReadPrgmBits(std::string_view sRegister) {
    return ReadRegister(part_, sRegister);
}

void Application::Maximize() {
    frame_.Maximize();
}

void Application::Minimize() {
    frame_.Minimize();
}

void Application::RestoreSetup(std::string& sName) {
    PutIntoFolder(frm_, sName);
    frm_.LoadBurstCommands(sName);
}

void Application::SaveSetup(std::string& sName) {
    PutIntoFolder(frm_, sName);
    frm_.SaveBurstCommands(sName);
}

void Application::RunBurstMode() {
    frm_.burst.run.RunBurstCommands();
}

void Application::StopBurstMode() {
    frm_.burst.run.StopBurstCommands();
}

void Application::AddBurst(std::string_view sRegName, std::int16_t iCmd) {
    if (frm_.burst.panel.AtRest()) AddBurstCommand(part_, sRegName, iCmd);
}

void Application::DeleteBurst() {
    if (frm_.burst.panel.AtRest()) DeleteBurstCommands(part_);
}

void Application::RunBurstOnce() {
    frm_.burst.run.RunBurstOnce();
}

void Application::StartBurst() {
    frm_.burst.run.StartBurst();
}

void Application::StopBurst() {
    frm_.burst.run.StopBurstCommands();
}

void Application::EnableBurst() {
    frm_.burst.run.EnableBurst();
}

void Application::SelectPart(std::string_view sName) {
    if (sName == part_.ID) return;
    std::string name(sName);
    frm_.SetupPartForm(name);
}

void Application::SelectTab(std::string_view sTab) {
    TabModel& tabs = frm_.tabPart;
    int found = 0;
    for (int tab = 0; tab < tabs.TabCount(); ++tab) {
        tabs.SelectTab(tab);
        if (tabs.TabCaption(tab) == sTab) found = tab;
    }
    tabs.SelectTab(sTab == "Bits/Pins" ? static_cast<int>(kBitsTab) : found);
}

void Application::SetMode(std::int16_t Index) {
    frm_.RestoreMode(Index);
}

void Application::ShowZentrel() {
    frm_.Visible = true;
    frame_.BringToFront();
}

bool Application::GetAutoReload() const {
    return frm_.menu(kAutoReload).Checked;
}

void Application::SetAutoReload(bool bValue) {
    frm_.menu(kAutoReload).Checked = bValue;
}

bool Application::GetSaveSettings() const {
    return frm_.menu(kSaveSettings).Checked;
}

void Application::SetSaveSettings(bool bValue) {
    frm_.menu(kSaveSettings).Checked = bValue;
}

void Application::usbSetSPIDelay(std::int16_t& timing) {
    timing = static_cast<std::int16_t>(std::clamp<int>(timing, 0, kSlowestSpi));
    usb_SetSPIDelay(part_, timing);
}

void Application::SetCommMode(std::string_view sValue) {
    if (EqualNoCase(sValue, kRouteUsb)) {
        frm_.port.SelectCommMode(kUsbOption);
    } else if (EqualNoCase(sValue, kRouteLpt)) {
        frm_.port.SelectCommMode(kLptOption);
    }
}

void Application::SetModeText(std::string_view sValue) {
    frm_.RestoreModeString(sValue);
}

bool Application::CheckModeText(std::string_view sValue) const {
    return frm_.FindMode(sValue) >= 0;
}

bool Application::CheckPLLName(std::string_view sValue) const {
    return PllNamed(sValue) != nullptr;
}

} // namespace zentrel
