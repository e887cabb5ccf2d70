#pragma once

#include <string>

#include "form/elements.h"

namespace zentrel {

struct Session;

/// The about dialog: the program's version, the loaded part file's version, and the history.
/// It isn't modal.
class AboutDialog {
  public:
    explicit AboutDialog(const Session& session);

    std::string Caption = "About Zentrel";
    Label LAB_1;
    Label lblPrgmVersion, lblPartVersion;
    Label Label5, Label4; ///< Two lines of the maker.
    TextBox Text1;        ///< The history, in view once the dialog is enlarged.
    Button Command1;      ///< "Version Info".
    Button OkayButton;    ///< "&OK".
    bool Open = false;
    int Height = kHeight; ///< In twips.

    static constexpr int kHeight = 2700;
    static constexpr int kEnlarged = 4500;

    void Show();
    void ClickVersionInfo();
    /// OK, or any key.
    void Close();

  private:
    const Session& session_;
};

} // namespace zentrel
