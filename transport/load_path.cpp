#include "transport/load_path.h"

#include "device/number_text.h"
#include "device/part.h"
#include "device/route_change.h"
#include "transport/lpt_route.h"
#include "transport/transport.h"
#include "transport/usb_bridge.h"
#include "transport/usb_presence.h"

namespace zentrel {
namespace {

constexpr std::string_view kLoadAllHook = "Hook_CheckProgramRegister_LoadAll";

void Load(cPart& part, cRegister& reg) {
    if (part.session().isUsb()) {
        // A bridge that is absent or gone took nothing.
        if (usbSendSPI(part, reg.word()) > 0 && usbGetError(part) == 0) reg.NoteSent();
        return;
    }
    Transport* transport = part.transport();
    if (!part.session().isLpt() || transport == nullptr) return;
    FillPortVector(part, reg.word(), part.readback_mode);
    const std::vector<std::int16_t>& vector = part.PortVector();
    SendPortVector(part, vector);
    transport->lastVector().assign(vector.begin(), vector.end());
    // A port that isn't open, or went on the way, took nothing or half.
    if ((transport->port().IsDriverOpened() & 1) != 0) reg.NoteSent();
}

// A copy, because the remapping itself switches the selection for a moment.
void Remap(cPart& part, std::string_view to) {
    const std::string from = part.session().CommMode_Select;
    RemapToRoute(part, from, to);
}

void GoToUsb(cPart& part) {
    Session& session = part.session();
    if (!session.isUsb()) {
        Remap(part, kRouteUsb);
        part.upward().port->EnableLPTOptions(false);
    }
    session.CommMode_Select = kRouteUsb;
    part.SetInputPinPosition(part.InputPinPositionINI % 100);
    usbSetupDevice(part);
}

void GoToLpt(cPart& part) {
    Session& session = part.session();
    if (!session.isLpt()) Remap(part, kRouteLpt);
    session.CommMode_Select = kRouteLpt;
    part.SetInputPinPosition(part.InputPinPositionINI - part.InputPinPositionINI % 100);
    part.upward().port->EnableLPTOptions(true);
}

} // namespace

void LoadChanges(cPart& part) {
    for (int i = 1; i <= part.Registers.Count(); ++i) {
        cRegister& reg = part.Registers(i);
        if (reg.Change()) Load(part, reg);
    }
}

void LoadRegisterNumber(cPart& part, std::int16_t iNum) {
    if (iNum >= 1 && iNum <= part.Registers.Count()) Load(part, part.Registers(iNum));
}

void LoadAll(cPart& part) {
    if (part.session().isUsb()) usbSetupDevice(part);
    ScriptHooks& hooks = *part.upward().hooks;
    const bool asked = hooks.HasModule(kLoadAllHook);
    for (int i = 1; i <= part.Registers.Count(); ++i) {
        // The script may do anything to the collection, so the register is kept for this round.
        const std::shared_ptr<cRegister> reg = part.Registers.Share(i);
        if (!asked || hooks.RunWithText(kLoadAllHook, kLoadAllHook, reg->ID()) != 0) {
            Load(part, *reg);
        }
    }
}

void LoadRegister(cPart& part, std::string_view name) {
    Load(part, part.Registers(name));
}

void LoadValue(cPart& part, std::int32_t val) {
    if (!part.session().isLpt()) return;
    const BitWord word(static_cast<std::uint32_t>(val));
    FillPortVector(part, word & BitWord::Ones(part.RegisterLength()), false);
    SendPortVector(part, part.PortVector());
}

std::vector<std::int16_t> GenerateBurstRegister(cPart& part, const BitWord& word) {
    FillPortVector(part, word, false);
    return part.PortVector();
}

std::vector<std::int16_t> GenerateBurstRegister(cPart& part, double dReg) {
    return GenerateBurstRegister(part, BitWord::FromDouble(dReg));
}

void UpdateOutputPins(cPart& part) {
    const std::int16_t pins = part.OutputPinValue();
    if (part.session().isUsb()) {
        usbSendPins(part, pins);
    } else if (part.session().isLpt() && part.transport() != nullptr) {
        WritePortState(part.transport()->port(), DataPort(part), pins);
    }
}

std::string PortVectorText(const cPart& part) {
    std::string text;
    if (part.transport() == nullptr) return text;
    for (const std::int16_t state : part.transport()->lastVector())
        text += NumberToText(state) + ' ';
    return text;
}

void LoadDevice(cPart& part) {
    struct Unhooked {
        explicit Unhooked(cPart& part) : part(part) { Unhook(part); }
        ~Unhooked() { Hook(part); }
        Unhooked(const Unhooked&) = delete;
        Unhooked& operator=(const Unhooked&) = delete;
        cPart& part;
    };
    const Unhooked unhooked(part);
    InitUSBInterface(part);
    UpdateOutputPins(part);
    LoadAll(part);
}

void CommMode_Click(cPart& part, std::int16_t Index) {
    if (Index == 0) {
        GoToUsb(part);
    } else if (Index == 1) {
        GoToLpt(part);
    } else {
        return;
    }
    StatusLine& status = *part.upward().status;
    status.StatusBar_CommMode(part.session().CommMode_Select);
    status.StatusBar_SetString("Changed communications mode.");
    PortScreenView& screen = *part.upward().port;
    screen.ApplyPinLabeling();
    screen.ShowPinOptions();
    screen.UpdatePortDiagram();
}

} // namespace zentrel
