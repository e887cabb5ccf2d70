#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "form/elements.h"

namespace zentrel {

struct Session;
class Messages;
class StatusLine;

/// Adds an error to the session's log: the text between two rules, with the moment's date and time
/// as the system writes them. `when` is that line.
void AddErrorAt(Session& session, Messages& messages, StatusLine& status, std::string_view newerror,
                std::string_view when);
/// The same, now.
void AddError(Session& session, Messages& messages, StatusLine& status, std::string_view newerror);

/// `frmErrorList`: shows a copy of the log. It isn't modal.
class ErrorList {
  public:
    explicit ErrorList(Session& session);

    std::string Caption = "Form1";
    Label Label1;    ///< "Error List:".
    TextBox Text1;   ///< The items, a blank line behind each.
    Button Command1; ///< "&Clear".
    Button Command2; ///< "&Ok".
    bool Open = false;

    /// Help, Show Errors: appends the whole log to what the dialog shows; its opening empties it.
    void Show();
    void SetErrors(const std::vector<std::string>& errors);
    /// Empties the text and the log.
    void ClickClear();
    void ClickOk();

  private:
    Session& session_;
};

} // namespace zentrel
