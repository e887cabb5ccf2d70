#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// How the model reaches what stands above it: one small interface for each need, which a higher
/// room implements and the program's start connects. Every member has a default that does nothing,
/// so a test connects only what it watches.
namespace zentrel {

class cPart;
class cPLL;
class cClkDist;
class cPrgmBits;
class cPrgmPin;
class cRegister;
class LinkedBlock;

/// The six refreshes. Each rewrites its screens' elements from the model.
class Displays {
  public:
    virtual ~Displays() = default;
    virtual void UpdatePLLDisplay() {}
    virtual void UpdateCLKDISTDisplay() {}
    virtual void UpdateBitDisplay() {}
    virtual void UpdateRegisterDisplay() {}
    virtual void UpdatePortDisplay() {}
    virtual void UpdateBurstDisplay() {}
    /// Follows in the loop filter's dialog; no part of the six.
    virtual void UpdateLoopFilterDisplay() {}
};

enum class MessageIcon { None, Information, Exclamation, Critical };

// The buttons of a message box as scripts number them: which set there is, the icon, which one is
// the default; and what each button answers.
inline constexpr int kMsgOk = 1, kMsgCancel = 2, kMsgAbort = 3, kMsgRetry = 4, kMsgIgnore = 5,
                     kMsgYes = 6, kMsgNo = 7;
inline constexpr int kMsgYesNo = 4;
inline constexpr int kMsgQuestion = 32;
inline constexpr int kMsgSecondButton = 256;

/// The answers that a set of buttons offers (the lowest four bits of `buttons`), in their order.
/// A set that isn't known is OK alone.
std::vector<int> MessageBoxAnswers(int buttons);
/// The one of them that Enter gives.
int MessageBoxDefault(int buttons);

/// Message and input boxes. A call waits for the answer.
class Messages {
  public:
    virtual ~Messages() = default;
    /// Shows a text with an OK button. An empty title is the program's own.
    virtual void Show(std::string_view text, std::string_view title = {},
                      MessageIcon icon = MessageIcon::None) {
        (void)text, (void)title, (void)icon;
    }
    /// The same with OK and Cancel; true for OK.
    virtual bool Confirm(std::string_view text, std::string_view title) {
        (void)text, (void)title;
        return true;
    }
    /// A box with a choice of buttons (see above); gives the answer.
    virtual int MessageBox(std::string_view text, std::string_view title, int buttons) {
        (void)text, (void)title;
        return MessageBoxDefault(buttons);
    }
    /// Asks for a line of text with `proposed` in it; nothing when cancelled.
    virtual std::optional<std::string> Ask(std::string_view prompt, std::string_view title,
                                           std::string_view proposed) {
        (void)prompt, (void)title, (void)proposed;
        return {};
    }
};

/// The status bar: the route in the first panel, the last event in the second.
class StatusLine {
  public:
    virtual ~StatusLine() = default;
    virtual void StatusBar_CommMode(std::string_view mode) { (void)mode; }
    virtual void StatusBar_SetString(std::string_view text) { (void)text; }
    virtual std::string StatusBar_GetString() const { return {}; }
};

/// The scripts of the loaded part file.
class ScriptHooks {
  public:
    virtual ~ScriptHooks() = default;
    /// Runs a procedure of a module when scripts may run; throws ScriptFailure when it fails.
    virtual void ExecuteScript(std::string_view module, std::string_view procedure) {
        (void)module, (void)procedure;
    }
    /// Whether a module of that exact name is loaded.
    virtual bool HasModule(std::string_view module) const {
        (void)module;
        return false;
    }
    /// Runs a procedure with one text and takes its result as a 16-bit integer.
    virtual std::int16_t RunWithText(std::string_view module, std::string_view procedure,
                                     std::string_view argument) {
        (void)module, (void)procedure, (void)argument;
        return 1;
    }
};

/// Lets pending events run between two passes of a burst.
class EventPause {
  public:
    virtual ~EventPause() = default;
    virtual void Pause() {}
};

/// The replay of the burst list (burst/burst_run.h), and its picture as digits.
class BurstPlayer {
  public:
    virtual ~BurstPlayer() = default;
    virtual void RunBurstCommands() {}
    virtual void RunBurstOnce() {}
    virtual void StopBurstCommands() {}
    virtual void DisplayBurstVector() {}
};

/// The tab strip and the keyboard focus.
class TabStrip {
  public:
    virtual ~TabStrip() = default;
    virtual int SelectedTab() const { return 0; }
    virtual void SelectTab(int tab) { (void)tab; }
    virtual int TabCount() const { return 0; }
    virtual std::string TabCaption(int tab) const {
        (void)tab;
        return {};
    }
    /// Removes tabs from the end until `count` are left, all of them in one row.
    virtual void KeepTabs(int count) { (void)count; }
    /// Moves the focus to the element `name`(`index`) and selects its text.
    virtual void FocusBox(std::string_view name, int index) { (void)name, (void)index; }
};

/// Rows, elements and tabs for what a load adds to the device. `group` is the frame's caption.
class ScreenBuilder {
  public:
    virtual ~ScreenBuilder() = default;
    virtual void RegisterLengthChanged(int bits) { (void)bits; }
    virtual void AddRegisterRow(cRegister& reg) { (void)reg; }
    virtual void AddBitElement(cPrgmBits& field, std::string_view group) {
        (void)field, (void)group;
    }
    virtual void AddCounterElement(cPrgmBits& field, std::string_view group) {
        (void)field, (void)group;
    }
    virtual void AddListElement(cPrgmBits& field, std::string_view group) {
        (void)field, (void)group;
    }
    virtual void AddPinElements(cPrgmPin& pin) { (void)pin; }
    /// A new tab at the end of the strip, selected. Returns its number.
    virtual int AddPLLTab(cPLL& pll) {
        (void)pll;
        return 0;
    }
    virtual int AddClkDistsTab(cClkDist& block) {
        (void)block;
        return 0;
    }
};

/// Hears of a change of route, before masks mean other lines: bursts convert themselves.
class RouteObserver {
  public:
    virtual ~RouteObserver() = default;
    virtual void RouteChanged(std::string_view from, std::string_view to) { (void)from, (void)to; }
};

/// The options that the model asks: menu entries with a check mark.
class MenuOptions {
  public:
    virtual ~MenuOptions() = default;
    /// `mnuAutoReloadChange`: edits are sent at once.
    virtual bool AutoReloadWithChanges() const { return true; }
};

/// What a change of route asks of the port screen.
class PortScreenView {
  public:
    virtual ~PortScreenView() = default;
    virtual void EnableLPTOptions(bool val) { (void)val; }
    virtual void ApplyPinLabeling() {}
    virtual void ShowPinOptions() {}
    virtual void UpdatePortDiagram() {}
};

/// Finds a clock block as a PLL sees it (synth/linked_block.h): by its position in `ClkDists`, or
/// by its name.
class LinkedBlocks {
  public:
    virtual ~LinkedBlocks() = default;
    virtual LinkedBlock* At(int position) {
        (void)position;
        return nullptr;
    }
    /// The first block whose `ID` is exactly this.
    virtual LinkedBlock* WithID(std::string_view id) {
        (void)id;
        return nullptr;
    }
};

/// Writes into the part file of a device.
class PartFileWriter {
  public:
    virtual ~PartFileWriter() = default;
    /// Writes a key of the file that belongs to the part of that name.
    virtual void WriteKey(std::string_view partName, std::string_view section, std::string_view key,
                          std::string_view value) {
        (void)partName, (void)section, (void)key, (void)value;
    }
};

/// All of them, connected once at the program's start. Never null.
struct Upward {
    Displays* displays;
    Messages* messages;
    StatusLine* status;
    ScriptHooks* hooks;
    EventPause* pause;
    TabStrip* tabs;
    ScreenBuilder* builder;
    RouteObserver* route;
    MenuOptions* options;
    PortScreenView* port;
    LinkedBlocks* blocks;
    PartFileWriter* partFile;
    BurstPlayer* burst;

    /// The ones that do nothing.
    static Upward None();
};

} // namespace zentrel
