#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "form/elements.h"
#include "partfile/file_store.h"
#include "screens/wire_filter.h"
#include "transport/monitor/wire_history.h"

namespace zentrel {

class FileDialogs;

/// The wire monitor's window: a list of what went over the wire, oldest first, the lines of one
/// record over time, and what it says. It records only while it is open.
class WireScreen {
  public:
    WireScreen(cPart& part, FileDialogs& dialogs,
               std::unique_ptr<FileStore> store = MakeDiskStore());

    /// Whoever else wants to follow the wire does it here.
    WireMonitor monitor;

    std::string Caption = "Wire Monitor";
    bool Open = false;
    TextBox txtFilter;
    Button cmdPause;   ///< "&Pause", and "&Go on" while it rests.
    Button cmdClear;   ///< "C&lear".
    Button cmdSaveVcd; ///< "Save &VCD...".
    Button cmdSaveCsv; ///< "Save &CSV...".
    Label lblCount;    ///< "3 of 14 records".

    /// Bench, Wire Monitor: opens the window, or asks to bring it to the front.
    void Show();
    /// What was recorded stays for the next time.
    void Close();
    /// Grows when the window, open or not, is to come to the front.
    std::uint64_t shown() const { return shown_; }

    /// Takes in what came since the last call. Cheap when nothing did, or while it is closed.
    void Refresh();
    /// A burst runs: records come faster than anybody reads.
    bool Busy() const;

    // What a user does.
    /// A keystroke in the filter box.
    void FilterTyped();
    void ClickPause();
    void ClickClear();
    /// Ask for a name and write what the list shows, whole or not at all.
    void ClickSaveVcd();
    void ClickSaveCsv();
    /// A row, or -1 for the newest word, whatever comes.
    void Select(int row);

    // The list.
    enum Column { kTime, kRoute, kRegister, kHex, kBits, kFields, kPins, kRead, kRemark, kColumns };
    static std::string_view Title(Column column);
    int RowCount() const { return static_cast<int>(rows_.size()); }
    /// Null when it has given way to newer ones since the last Refresh.
    const WireRecord* Row(int row) const;
    std::string Text(int row, Column column) const;
    /// Rows that left the list at its top since it was made anew, and how often that was done.
    std::uint64_t dropped() const { return dropped_; }
    std::uint64_t listing() const { return listing_; }

    /// The selected row, -1 when the newest word is followed.
    int SelectedRow() const;
    /// The record whose lines are drawn: the selected one, else the newest word of the list; null
    /// when there is none. Valid until the next record comes.
    const WireRecord* Shown() const;
    /// Which one it is: "R0 0x12 3450, LPT, 13:05:59.123456".
    std::string ShownTitle() const;

    /// A line about the record: a field, a pin, a packet.
    struct Detail {
        std::string name, value;
        bool changed = false; ///< Marked: it differs from the word before.
        bool packet = false;  ///< Bytes, to be set in a fixed pitch.
    };
    std::vector<Detail> Details() const;

  private:
    void Relist();
    void TakeIn();
    void ShowState();
    std::vector<const WireRecord*> Listed() const;
    using Export = std::string (*)(std::span<const WireRecord* const>);
    void Save(Export text, std::string_view title, std::string_view filter);

    cPart& part_;
    FileDialogs& dialogs_;
    std::unique_ptr<FileStore> store_;
    WireHistory history_{monitor};
    WireFilter filter_;
    std::deque<std::uint64_t> rows_; // numbers in the history
    std::uint64_t taken_ = 0;        // everything below was looked at
    std::uint64_t dropped_ = 0, listing_ = 0, shown_ = 0;
    bool hasSelection_ = false;
    std::uint64_t selected_ = 0;
    bool paused_ = false;
};

} // namespace zentrel
