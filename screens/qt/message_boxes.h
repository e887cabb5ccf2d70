#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include <QPointer>
#include <QWidget>

#include "device/upward.h"
#include "screens/file_dialogs.h"

namespace zentrel::view {

/// Message and input boxes over the window. A call waits for the answer; a call from within waits
/// inside. With nobody there to answer, the words go to the error output and the default is taken.
class MessageBoxes : public Messages {
  public:
    explicit MessageBoxes(QWidget* window = nullptr);

    void SetWindow(QWidget* window) { window_ = window; }
    /// Whether someone can answer. At the start: whether the platform has a screen.
    void SetAttended(bool attended) { attended_ = attended; }
    bool attended() const { return attended_; }
    /// Runs ahead of each box, so that the window behind it shows how things stand.
    std::function<void()> BeforeShow;

    void Show(std::string_view text, std::string_view title, MessageIcon icon) override;
    bool Confirm(std::string_view text, std::string_view title) override;
    int MessageBox(std::string_view text, std::string_view title, int buttons) override;
    std::optional<std::string> Ask(std::string_view prompt, std::string_view title,
                                   std::string_view proposed) override;

  private:
    bool Begin() const;

    QPointer<QWidget> window_;
    bool attended_;
};

/// The file dialogs over the window. Without anyone to answer they cancel.
class FileDialogBoxes : public FileDialogs {
  public:
    explicit FileDialogBoxes(const MessageBoxes& boxes) : boxes_(boxes) {}
    void SetWindow(QWidget* window) { window_ = window; }

    std::optional<std::string> SaveName(std::string_view title) override;
    std::optional<std::string> OpenName(std::string_view title) override;
    std::optional<std::string> ExportName(std::string_view title, std::string_view filter) override;

  private:
    const MessageBoxes& boxes_;
    QPointer<QWidget> window_;
};

} // namespace zentrel::view
