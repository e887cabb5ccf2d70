#include "screens/error_list.h"

#include <array>
#include <ctime>

#include "device/upward.h"
#include "form/session.h"

namespace zentrel {
namespace {

constexpr std::string_view kRule = "------------------------";

// Date, a blank, time, as the system's locale writes them.
std::string Now() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    if (localtime_r(&now, &local) == nullptr) return {};
    std::array<char, 128> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%x %X", &local);
    return {text.data(), length};
}

} // namespace

void AddErrorAt(Session& session, Messages& messages, StatusLine& status, std::string_view newerror,
                std::string_view when) {
    std::string item(kRule);
    item.append("\r\n").append(when).append("\r\n").append(newerror).append("\r\n").append(kRule);
    session.logged_errors.push_back(std::move(item));
    if (session.msgbox_errors) messages.Show(newerror);
    status.StatusBar_SetString(newerror);
}

void AddError(Session& session, Messages& messages, StatusLine& status, std::string_view newerror) {
    AddErrorAt(session, messages, status, newerror, Now());
}

ErrorList::ErrorList(Session& session) : session_(session) {
    Label1.Caption = "Error List:";
    Command1.Caption = "&Clear";
    Command2.Caption = "&Ok";
}

void ErrorList::Show() {
    if (!Open) Text1.Text.clear();
    Open = true;
    SetErrors(session_.logged_errors);
}

void ErrorList::SetErrors(const std::vector<std::string>& errors) {
    for (const std::string& error : errors)
        Text1.Text.append(error).append("\r\n\r\n");
}

void ErrorList::ClickClear() {
    Text1.Text.clear();
    session_.logged_errors.clear();
}

void ErrorList::ClickOk() {
    Open = false;
    Text1.Text.clear();
}

} // namespace zentrel
