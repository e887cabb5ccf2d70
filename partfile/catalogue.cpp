#include "partfile/catalogue.h"

#include <algorithm>

#include "device/number_text.h"
#include "device/text.h"
#include "partfile/section_reader.h"

namespace zentrel {
namespace {

constexpr std::string_view kRecentSection = "RECENTPARTS";
constexpr std::string_view kRecentDefault = "..........";
constexpr std::string_view kBenchSection = "BENCH";
constexpr std::string_view kBoardKey = "BOARD";
constexpr std::string_view kSimulated = "Simulated";
constexpr std::string_view kHardware = "Hardware";

std::vector<std::string> ReadItems(IniFiles& files, std::string_view section,
                                   std::string_view defaultItem, std::vector<Problem>& problems) {
    const std::string path = files.Folder().CataloguePath();
    const std::string realPath = files.RealPath(path);
    SectionReader reader(files.View(path), realPath, section, problems);
    std::vector<std::string> items;
    const int count = reader.Count();
    for (int i = 0; i < count; ++i) {
        reader.SetEntry(i);
        items.push_back(reader.Text("ITEM", defaultItem));
    }
    return items;
}

// How many entries of a list the catalogue keeps now.
std::size_t RecentCount(IniFiles& files, std::size_t listSize) {
    std::vector<Problem> toldAtStart;
    const std::string path = files.Folder().CataloguePath();
    const int count = SectionReader(files.View(path), path, kRecentSection, toldAtStart).Count();
    return std::min(static_cast<std::size_t>(count), listSize);
}

} // namespace

Catalogue ReadCatalogue(IniFiles& files) {
    const ReadScope scope(files);
    Catalogue catalogue;
    const std::string path = files.Folder().CataloguePath();
    if (const auto failure = files.ReadFailure(path)) {
        catalogue.problems.push_back({files.RealPath(path), "", "", *failure, "no devices"});
    }
    for (std::size_t i = 0; i < kDeviceFamilies.size(); ++i) {
        catalogue.items[i] =
            ReadItems(files, kDeviceFamilies[i].section, "QVX", catalogue.problems);
    }
    catalogue.recent = ReadItems(files, kRecentSection, kRecentDefault, catalogue.problems);
    if (catalogue.recent.empty()) {
        catalogue.recent.assign(kInitialRecentList.begin(), kInitialRecentList.end());
    }
    return catalogue;
}

std::string GetPartType(IniFiles& files, std::string_view partName) {
    const ReadScope scope(files);
    std::vector<Problem> toldAtStart;
    for (const DeviceFamily& family : kDeviceFamilies) {
        if (!family.searchedForType) continue;
        const auto items = ReadItems(files, family.section, "0", toldAtStart);
        if (std::find(items.begin(), items.end(), partName) != items.end()) {
            return std::string(family.familyText.value_or(""));
        }
    }
    return {};
}

void UpdateRecentList(IniFiles& files, std::string_view partName, std::span<std::string> list) {
    list = list.first(RecentCount(files, list.size()));
    if (list.empty()) return;
    auto place = std::find(list.begin(), list.end(), partName);
    if (place == list.end()) --place;
    std::rotate(list.begin(), place, place + 1);
    list.front() = partName;
}

bool SaveRecentList(IniFiles& files, std::span<const std::string> list) {
    WriteScope scope(files);
    const std::string path = files.Folder().CataloguePath();
    const std::size_t count = RecentCount(files, list.size());
    for (std::size_t i = 0; i < count; ++i) {
        const std::string key = "ITEM" + KeyNumber(static_cast<int>(i));
        files.SetPrivateSetting(path, kRecentSection, key, list[i]);
    }
    return scope.Commit();
}

BoardChoice ReadBoard(IniFiles& files) {
    const std::string board = files.GetPrivateSetting(files.Folder().CataloguePath(), kBenchSection,
                                                      kBoardKey, kHardware);
    return EqualNoCase(board, kSimulated) ? BoardChoice::kSimulated : BoardChoice::kHardware;
}

bool WriteBoard(IniFiles& files, BoardChoice board) {
    return files.SetPrivateSetting(files.Folder().CataloguePath(), kBenchSection, kBoardKey,
                                   board == BoardChoice::kSimulated ? kSimulated : kHardware);
}

} // namespace zentrel
