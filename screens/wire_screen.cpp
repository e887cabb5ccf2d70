#include "screens/wire_screen.h"

#include <algorithm>

#include "device/number_text.h"
#include "device/part.h"
#include "screens/file_dialogs.h"
#include "transport/monitor/wire_export.h"
#include "transport/monitor/wire_text.h"

namespace zentrel {
namespace {

constexpr std::string_view kVcdFilter = "Value Change Dump (*.vcd)|*.vcd|All Files (*.*)|*.*";
constexpr std::string_view kCsvFilter = "Comma-separated Values (*.csv)|*.csv|All Files (*.*)|*.*";
/// How far back the newest word is looked for among commands.
constexpr std::size_t kLookBack = 1000;

std::string Count(std::size_t number) {
    return NumberToText(static_cast<double>(number));
}

} // namespace

WireScreen::WireScreen(cPart& part, FileDialogs& dialogs, std::unique_ptr<FileStore> store)
    : monitor(part), part_(part), dialogs_(dialogs), store_(std::move(store)) {
    cmdClear.Caption = "C&lear";
    cmdSaveVcd.Caption = "Save &VCD...";
    cmdSaveCsv.Caption = "Save &CSV...";
    ShowState();
}

std::string_view WireScreen::Title(Column column) {
    constexpr std::string_view kTitles[] = {"Time",   "Route", "Register",  "Hex",   "Bits",
                                            "Fields", "Pins",  "Read back", "Remark"};
    return kTitles[column];
}

void WireScreen::Show() {
    ++shown_;
    if (Open) return;
    Open = true;
    paused_ = false;
    history_.Follow();
    ShowState();
}

void WireScreen::Close() {
    Open = false;
    history_.Rest();
}

void WireScreen::Refresh() {
    if (!Open) return;
    monitor.Settle();
    if (taken_ == history_.end()) return;
    TakeIn();
    ShowState();
}

bool WireScreen::Busy() const {
    return part_.BurstRunning();
}

void WireScreen::TakeIn() {
    while (!rows_.empty() && rows_.front() < history_.begin()) {
        rows_.pop_front();
        ++dropped_;
    }
    for (taken_ = std::max(taken_, history_.begin()); taken_ < history_.end(); ++taken_) {
        if (filter_.Takes(history_[taken_])) rows_.push_back(taken_);
    }
}

void WireScreen::Relist() {
    ++listing_;
    rows_.clear();
    dropped_ = 0;
    taken_ = history_.begin();
    TakeIn();
    ShowState();
}

void WireScreen::ShowState() {
    cmdPause.Caption = paused_ ? "&Go on" : "&Pause";
    cmdClear.Enabled = history_.size() > 0;
    cmdSaveVcd.Enabled = cmdSaveCsv.Enabled = !rows_.empty();
    std::string count = Count(history_.size());
    if (!filter_.empty()) count = Count(rows_.size()) + " of " + count;
    count += history_.size() == 1 ? " record" : " records";
    if (history_.size() == WireHistory::kLimit) count += ", the oldest give way";
    lblCount.Caption = paused_ ? count + ", paused" : count;
}

void WireScreen::FilterTyped() {
    filter_ = WireFilter(txtFilter.Text);
    Relist();
}

void WireScreen::ClickPause() {
    paused_ = !paused_;
    if (paused_) {
        history_.Rest();
    } else {
        history_.Follow();
    }
    TakeIn();
    ShowState();
}

void WireScreen::ClickClear() {
    history_.Clear();
    hasSelection_ = false;
    Relist();
}

void WireScreen::ClickSaveVcd() {
    Save(VcdOf, "Save Wire Monitor as VCD", kVcdFilter);
}

void WireScreen::ClickSaveCsv() {
    Save(CsvOf, "Save Wire Monitor as CSV", kCsvFilter);
}

std::vector<const WireRecord*> WireScreen::Listed() const {
    std::vector<const WireRecord*> records;
    records.reserve(rows_.size());
    for (const std::uint64_t number : rows_)
        records.push_back(&history_[number]);
    return records;
}

void WireScreen::Save(Export text, std::string_view title, std::string_view filter) {
    const auto name = dialogs_.ExportName(title, filter);
    if (!name) return;
    Refresh(); // The dialog may have stood open for long.
    const std::string failure = store_->Replace(*name, text(Listed()));
    if (failure.empty()) {
        part_.upward().status->StatusBar_SetString("Saved " + *name);
    } else {
        part_.upward().messages->Show(*name + "\r\n" + failure, {}, MessageIcon::Exclamation);
    }
}

void WireScreen::Select(int row) {
    hasSelection_ = row >= 0 && row < RowCount();
    if (hasSelection_) selected_ = rows_[static_cast<std::size_t>(row)];
}

int WireScreen::SelectedRow() const {
    if (!hasSelection_) return -1;
    const auto at = std::lower_bound(rows_.begin(), rows_.end(), selected_);
    return at != rows_.end() && *at == selected_ ? static_cast<int>(at - rows_.begin()) : -1;
}

const WireRecord* WireScreen::Shown() const {
    if (hasSelection_ && history_.Holds(selected_)) return &history_[selected_];
    const std::size_t count = std::min(rows_.size(), kLookBack);
    for (std::size_t back = 1; back <= count; ++back) {
        const WireRecord& record = history_[rows_[rows_.size() - back]];
        if (record.kind == WireKind::Word) return &record;
    }
    return rows_.empty() ? nullptr : &history_[rows_.back()];
}

std::string WireScreen::ShownTitle() const {
    const WireRecord* record = Shown();
    if (record == nullptr) return {};
    std::string title = WireName(*record);
    if (const std::string hex = WireHex(*record); !hex.empty()) title += "  0x" + hex;
    return title + "  " + std::string(WireRouteText(*record)) + "  " + WireTime(*record);
}

const WireRecord* WireScreen::Row(int row) const {
    if (row < 0 || row >= RowCount()) return nullptr;
    const std::uint64_t number = rows_[static_cast<std::size_t>(row)];
    return history_.Holds(number) ? &history_[number] : nullptr;
}

std::string WireScreen::Text(int row, Column column) const {
    const WireRecord* found = Row(row);
    if (found == nullptr) return {};
    const WireRecord& record = *found;
    switch (column) {
    case kTime:
        return WireTime(record);
    case kRoute:
        return std::string(WireRouteText(record));
    case kRegister:
        return WireName(record);
    case kHex:
        return WireHex(record);
    case kBits:
        return WireBits(record);
    case kFields:
        return WireFieldsText(record);
    case kPins:
        return WirePins(record);
    case kRead:
        return WireReadBack(record);
    case kRemark:
        return WireRemark(record);
    case kColumns:
        break;
    }
    return {};
}

std::vector<WireScreen::Detail> WireScreen::Details() const {
    std::vector<Detail> details;
    const WireRecord* record = Shown();
    if (record == nullptr) return details;
    for (WireField& field : WireFields(*record))
        details.push_back({std::move(field.name), std::move(field.value), field.changed, false});
    const auto add = [&](std::string name, std::string value) {
        if (!value.empty()) details.push_back({std::move(name), std::move(value), false, false});
    };
    add("Pins", WirePins(*record));
    add("Read back", WireReadBack(*record));
    add("Remark", WireRemark(*record));
    for (const WirePacket& packet : WirePackets(*record))
        details.push_back({WirePacketName(packet),
                           (packet.sent ? "\u2192 " : "\u2190 ") + WireBytes(packet.bytes), false,
                           true});
    return details;
}

} // namespace zentrel
