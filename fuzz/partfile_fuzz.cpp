// Part files of any bytes: the text layer's promises, then a whole load with its migration and a
// change, in memory.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "partfile/catalogue.h"
#include "partfile/memory_store.h"
#include "partfile/part_definition.h"
#include "partfile/utf16.h"

namespace {

using namespace zentrel;

void Require(bool holds) {
    if (!holds) std::abort();
}

// Splits off the front of `data` up to the first 0xFF: names and values for the changes.
std::string_view TakePiece(std::string_view& data) {
    const auto end = data.find('\xFF');
    const std::string_view piece = data.substr(0, end);
    data.remove_prefix(end == std::string_view::npos ? data.size() : end + 1);
    return piece;
}

void CheckText(std::string_view section, std::string_view key, std::string_view value,
               std::string_view text) {
    IniText ini{std::string(text)};
    Require(ini.Text() == text);
    const auto other = ini.Find("SETUP", "CLOCK");
    const std::string before(other.value_or(""));

    ini.Set(section, key, value);
    const IniText again(ini.Text());
    Require(again.Text() == ini.Text());
    Require(again.Find(section, key) == ini.Find(section, key));
    Require(again.Find("SETUP", "CLOCK") == ini.Find("SETUP", "CLOCK"));
    const auto wide = FromUtf16(text);
    if (wide && text.size() % 2 == 0) Require(ToUtf16(*wide) == text);
    // A change of a plain key leaves the others.
    const bool plain = value.find_first_of("\r\n") == std::string_view::npos;
    if (plain && other && key == "DATA") Require(again.Find("SETUP", "CLOCK") == before);
}

void CheckLoad(std::string_view text) {
    MemoryStore::Files stored;
    IniFiles files(AppPath("/z"), std::make_unique<MemoryStore>(stored));
    stored.bytes["/z/p.ini"] = text;
    stored.bytes["/z/zentrel.ini"] = text;
    const std::string path = files.Folder().PartFilePath("p");
    const PartDefinition first = LoadPartDefinition(files, path);
    Require(files.TakeWriteFailures().empty());
    const PartDefinition second = LoadPartDefinition(files, path);
    Require(first.setup.clock == second.setup.clock);
    Require(first.pins.size() == second.pins.size());
    Require(stored.replacements <= 1);
    ProblemsMessage(first.problems);
    ReadCatalogue(files);
    GetPartType(files, "QVX");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    const auto section = TakePiece(rest);
    const auto key = TakePiece(rest);
    const auto value = TakePiece(rest);
    CheckText(section, key, value, rest);
    CheckLoad(rest);
    return 0;
}
