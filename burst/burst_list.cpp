#include "burst/burst_list.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "device/number_text.h"
#include "device/part.h"

namespace zentrel {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kTriggerPin = "trigger";

std::string PinList(const cPart& part) {
    std::string text;
    for (const cPrgmPin& pin : part.PrgmPins) {
        text += "; " + pin.ID() + "= " + (pin.Enabled() ? "True" : "False");
    }
    return text;
}

bool TriggerEnabled(const cPart& part) {
    const cPrgmPin* trigger = part.PrgmPins.Find(kTriggerPin);
    return trigger != nullptr && trigger->Enabled();
}

std::int32_t DelayCount(std::string_view text) {
    if (const auto count = ParseFileInt32(text)) return *count;
    throw TypeMismatch("the delay \"" + std::string(text) + "\"");
}

void FillDelay(cBurst& command, std::string_view count) {
    const std::int32_t passes = DelayCount(count);
    command.Command = BurstKind::Delay;
    command.Description = "Delay of " + std::string(count);
    command.SetRegister(passes);
}

void FillLoad(cBurst& command, std::string_view regName) {
    cPart& part = command.Part();
    const cRegister& reg = part.Registers(regName);
    command.Command = BurstKind::LoadRegister;
    command.Description =
        "Load " + std::string(regName) + " = " + reg.RegisterString() + PinList(part);
    command.SetWord(reg.word());
    command.RegisterName = reg.ID();
    command.OutputPinValue = part.OutputPinValue();
    command.useTrigger = TriggerEnabled(part);
}

void FillPins(cBurst& command) {
    const cPart& part = command.Part();
    command.Command = BurstKind::ChangePins;
    command.Description = "Change Pin State" + PinList(part) + (part.LEModeHigh ? "; LE High" : "");
    command.SetRegister(0);
    command.OutputPinValue = part.OutputPinValue();
}

void Fill(cBurst& command, std::string_view regName, std::int16_t cmd) {
    switch (static_cast<BurstKind>(cmd)) {
    case BurstKind::LoadRegister:
        FillLoad(command, regName);
        return;
    case BurstKind::ChangePins:
        FillPins(command);
        return;
    case BurstKind::Delay:
        FillDelay(command, regName);
        return;
    }
    throw OutOfRange("burst command " + std::to_string(cmd) + "; 0, 1 and 2 are known");
}

std::shared_ptr<cBurst> Build(cPart& part, std::string_view regName, std::int16_t cmd) {
    auto command = std::make_shared<cBurst>(part, BurstKind::Delay);
    Fill(*command, regName, cmd);
    if (command->Command == BurstKind::LoadRegister) {
        command->LowByte = part.Registers(regName).LowByte();
    }
    return command;
}

} // namespace

void AddBurstCommand(cPart& part, std::string_view regName, std::int16_t cmd,
                     std::optional<int> before) {
    part.BurstCmds.Insert(Build(part, regName, cmd), before.value_or(0));
    part.upward().displays->UpdateBurstDisplay();
}

void AppendBurstCommand(cPart& part, std::string_view regName, std::int16_t cmd) {
    part.BurstCmds.Add(Build(part, regName, cmd));
}

void ChangeBurstCommand(cPart& part, int line, std::string_view regName, std::int16_t cmd) {
    cBurst& present = part.BurstCmds(line);
    // Built aside, so that a name or number that fails leaves the command as it was.
    cBurst changed(present);
    Fill(changed, regName, cmd);
    present.Assign(std::move(changed));
}

void DeleteBurstCommand(cPart& part, int line) {
    if (part.BurstCmds.empty()) return;
    part.BurstCmds.Remove(std::clamp(line, 1, part.BurstCmds.Count()));
    part.upward().displays->UpdateBurstDisplay();
}

void DeleteBurstCommands(cPart& part) {
    part.BurstCmds.Clear();
    part.upward().displays->UpdateBurstDisplay();
}

void RestoreBurstCommand(cPart& part, int line) {
    try {
        const cBurst& command = part.BurstCmds(line);
        if (command.Command == BurstKind::LoadRegister) {
            part.Registers(command.RegisterName).SetValue(command.Register());
        }
        part.UpdateDisplays();
    } catch (const Error&) {
        return; // A line that is gone, or a register: there is nothing to put back.
    }
}

std::string BurstText(const cPart& part) {
    std::string text;
    for (const cBurst& command : part.BurstCmds) {
        text += command.Description;
        text += kLineEnd;
    }
    return text;
}

std::string BurstPatternText(const cPart& part) {
    std::string text;
    for (const cBurst& command : part.BurstCmds) {
        text += command.Pattern();
        text += kLineEnd;
    }
    return text;
}

void BurstRouteObserver::RouteChanged(std::string_view from, std::string_view to) {
    for (cBurst& command : part_.BurstCmds)
        command.ConvertRoute(from, to);
}

} // namespace zentrel
