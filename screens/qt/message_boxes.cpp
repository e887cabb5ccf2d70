#include "screens/qt/message_boxes.h"

#include <cstdio>

#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QInputDialog>
#include <QMessageBox>

#include "screens/qt/model_text.h"

namespace zentrel::view {

namespace {

constexpr const char* kProgram = "Zentrel";

bool HasScreen() {
    const QString platform = QGuiApplication::platformName();
    return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

void TellNobody(std::string_view title, std::string_view text) {
    const std::string_view head = title.empty() ? std::string_view(kProgram) : title;
    std::fprintf(stderr, "%.*s: %.*s\n", static_cast<int>(head.size()), head.data(),
                 static_cast<int>(text.size()), text.data());
}

QString Title(std::string_view title) {
    return title.empty() ? QString::fromLatin1(kProgram) : FromModel(title);
}

// The kinds of file in the toolkit's form. On this desktop a name needs no point to be any file.
QStringList FilterList() {
    const QStringList parts = FromModel(kSetupFileFilter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString pattern =
            parts[i + 1] == QLatin1String("*.*") ? QStringLiteral("*") : parts[i + 1];
        const QString name = parts[i].section(QLatin1String(" ("), 0, 0);
        filters.append(QStringLiteral("%1 (%2)").arg(name, pattern));
    }
    return filters;
}

QString Filters() {
    return FilterList().join(QLatin1String(";;"));
}

QString SelectedFilter() {
    return FilterList().value(kSetupFileFilterIndex - 1);
}

QMessageBox::Icon IconOf(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::Exclamation:
        return QMessageBox::Warning;
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    case MessageIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

void Fill(QMessageBox& box, std::string_view text) {
    box.setTextFormat(Qt::PlainText);
    box.setText(FromModel(text));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
}

} // namespace

MessageBoxes::MessageBoxes(QWidget* window) : window_(window), attended_(HasScreen()) {}

bool MessageBoxes::Begin() const {
    if (attended_ && BeforeShow) BeforeShow();
    return attended_;
}

void MessageBoxes::Show(std::string_view text, std::string_view title, MessageIcon icon) {
    if (!Begin()) return TellNobody(title, text);
    QMessageBox box(IconOf(icon), Title(title), {}, QMessageBox::Ok, window_);
    Fill(box, text);
    box.exec();
}

bool MessageBoxes::Confirm(std::string_view text, std::string_view title) {
    if (!Begin()) return TellNobody(title, text), true;
    QMessageBox box(QMessageBox::Question, Title(title), {}, QMessageBox::Ok | QMessageBox::Cancel,
                    window_);
    Fill(box, text);
    box.setDefaultButton(QMessageBox::Ok);
    return box.exec() == QMessageBox::Ok;
}

std::optional<std::string> MessageBoxes::Ask(std::string_view prompt, std::string_view title,
                                             std::string_view proposed) {
    if (!Begin()) {
        TellNobody(title, prompt);
        return std::string(proposed);
    }
    QInputDialog dialog(window_);
    dialog.setWindowTitle(Title(title));
    dialog.setLabelText(FromModel(prompt));
    dialog.setTextValue(FromModel(proposed));
    if (dialog.exec() != QDialog::Accepted) return {};
    return ToModel(dialog.textValue());
}

std::optional<std::string> DesktopFileDialogs::OpenName(std::string_view title) {
    if (!boxes_.attended()) return {};
    QString selected = SelectedFilter();
    const QString name =
        QFileDialog::getOpenFileName(window_, FromModel(title), {}, Filters(), &selected);
    if (name.isEmpty()) return {};
    return ToModel(name);
}

std::optional<std::string> DesktopFileDialogs::SaveName(std::string_view title) {
    if (!boxes_.attended()) return {};
    QString selected = SelectedFilter();
    const QString name =
        QFileDialog::getSaveFileName(window_, FromModel(title), {}, Filters(), &selected);
    if (name.isEmpty()) return {};
    // The usual ending, for a name that was typed without one under that filter.
    const bool bare = selected == SelectedFilter() && QFileInfo(name).suffix().isEmpty();
    return ToModel(bare ? name + QStringLiteral(".mac") : name);
}

} // namespace zentrel::view
