#include "partfile/migration.h"

#include <string>

#include "device/number_text.h"
#include "device/pin_numbers.h"
#include "form/session.h"
#include "partfile/section_reader.h"

namespace zentrel {
namespace {

// The highest bit of the masks of the parallel port: status bit 7.
constexpr int kHighestBit = 23;
constexpr int kDefaultBit = 3;

class Migration {
  public:
    Migration(IniFiles& files, std::string_view path, std::vector<Problem>& problems)
        : files_(files), path_(path), realPath_(files.RealPath(path)), problems_(problems) {}

    void Run() {
        Write("SETUP", "COMM_MODE", std::string(kRouteLpt));
        ConvertLine("CLOCK", 1);
        ConvertLine("DATA", 2);
        ConvertLine("LE", 3);
        ConvertPins();
        ConvertModes();
        // Last: an interrupted migration runs again at the next load.
        Write("SETUP", "ZENTREL_VERSION", std::string(kCurrentFormat));
    }

  private:
    SectionReader Section(std::string_view name) {
        return {files_.View(path_), realPath_, name, problems_};
    }

    int Count(std::string_view name) {
        std::vector<Problem> toldByTheReading;
        return SectionReader(files_.View(path_), realPath_, name, toldByTheReading).Count();
    }

    void Write(std::string_view section, std::string_view key, const std::string& value) {
        files_.SetPrivateSetting(path_, section, key, value);
    }

    void ConvertLine(std::string_view key, std::int16_t defaultMask) {
        const std::int16_t mask = Section("SETUP").Int(key, defaultMask);
        Write("SETUP", key, std::to_string(LptPortValueToPin(mask)));
    }

    void ConvertPins() {
        const int count = Count("PINS");
        for (int i = 0; i < count; ++i) {
            SectionReader section = Section("PINS");
            section.SetEntry(i);
            int bit = section.Int("LOCATION", kDefaultBit);
            if (bit < 0 || bit > kHighestBit) {
                section.Note("LOCATION", std::to_string(kDefaultBit));
                bit = kDefaultBit;
            }
            Write("PINS", "LOCATION" + KeyNumber(i),
                  std::to_string(LptPortValueToPin(std::int32_t{1} << bit)));
        }
    }

    void ConvertModes() {
        const int count = Count("MODES");
        for (int i = 0; i < count; ++i) {
            SectionReader section = Section("MODES");
            section.SetEntry(i);
            const std::int32_t mask = section.Long("PINS", 3);
            Write("MODES", "PINS" + KeyNumber(i),
                  std::to_string(PortValueToPinMask(kRouteLpt, mask)));
        }
    }

    IniFiles& files_;
    std::string_view path_;
    std::string realPath_;
    std::vector<Problem>& problems_;
};

} // namespace

bool NeedsMigration(IniFiles& files, std::string_view path) {
    return files.GetPrivateSetting(path, "SETUP", "ZENTREL_VERSION", kOldFormat) == kOldFormat;
}

std::vector<Problem> MigratePartFile(IniFiles& files, std::string_view path) {
    std::vector<Problem> problems;
    const WriteScope scope(files);
    // A file that can't be read isn't rewritten either; the reading tells why.
    if (!path.empty() && !files.ReadFailure(path) && NeedsMigration(files, path)) {
        Migration(files, path, problems).Run();
    }
    return problems;
}

} // namespace zentrel
