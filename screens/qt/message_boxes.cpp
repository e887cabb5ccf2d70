#include "screens/qt/message_boxes.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include <QFileDialog>
#include <QGridLayout>
#include <QGuiApplication>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>

#include "screens/qt/metrics.h"
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

/// The kinds of file in the toolkit's form. Text and pattern take turns; the text names the
/// pattern.
QStringList Filters(std::string_view kinds) {
    const QStringList parts = FromModel(kinds).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        filters << QString(parts[i]).replace(QLatin1String("*.*"), QLatin1String("*"));
    return filters;
}

// Scripts choose an icon by the next four bits of their buttons.
QMessageBox::Icon IconOf(int buttons) {
    switch (buttons & 0xF0) {
    case 16:
        return QMessageBox::Critical;
    case kMsgQuestion:
        return QMessageBox::Question;
    case 48:
        return QMessageBox::Warning;
    case 64:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

// By answer, from OK = 1.
constexpr std::array kButtons{QMessageBox::Ok,    QMessageBox::Cancel, QMessageBox::Abort,
                              QMessageBox::Retry, QMessageBox::Ignore, QMessageBox::Yes,
                              QMessageBox::No};

QMessageBox::StandardButton ButtonOf(int answer) {
    return kButtons[static_cast<std::size_t>(answer - 1)];
}

/// A text that would be taller than many a screen scrolls inside its box, so that the buttons stay
/// in reach.
void Scroll(QMessageBox& box) {
    auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (!label || !grid || grid->indexOf(label) < 0) return;
    int row = 0, column = 0, rows = 1, columns = 1;
    grid->getItemPosition(grid->indexOf(label), &row, &column, &rows, &columns);
    auto* view = new QPlainTextEdit(box.text(), &box);
    view->setReadOnly(true);
    view->setAccessibleName(box.windowTitle());
    view->setFixedSize(Metrics::Now().Units(60), Metrics::Now().Units(40));
    label->hide();
    grid->addWidget(view, row, column, rows, columns);
}

void Fill(QMessageBox& box, std::string_view text) {
    constexpr std::size_t kLongText = 1500;
    constexpr std::ptrdiff_t kManyLines = 30;
    box.setTextFormat(Qt::PlainText);
    box.setText(FromModel(text));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (text.size() > kLongText || std::count(text.begin(), text.end(), '\n') > kManyLines)
        Scroll(box);
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

int MessageBoxes::MessageBox(std::string_view text, std::string_view title, int buttons) {
    const int usual = MessageBoxDefault(buttons);
    if (!Begin()) return TellNobody(title, text), usual;
    QMessageBox box(IconOf(buttons), Title(title), {}, QMessageBox::NoButton, window_);
    Fill(box, text);
    const std::vector<int> answers = MessageBoxAnswers(buttons);
    for (const int answer : answers)
        box.addButton(ButtonOf(answer));
    box.setDefaultButton(ButtonOf(usual));
    const int chosen = box.exec();
    for (const int answer : answers)
        if (ButtonOf(answer) == chosen) return answer;
    return usual; // closed in a way that no button stands for
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

std::optional<std::string> FileDialogBoxes::SaveName(std::string_view title) {
    if (!boxes_.attended()) return {};
    const QStringList filters = Filters(kSetupFileFilter);
    QString chosen = filters.value(kSetupFileFilterIndex - 1);
    const QString name = QFileDialog::getSaveFileName(window_, FromModel(title), {},
                                                      filters.join(QLatin1String(";;")), &chosen);
    return name.isEmpty() ? std::nullopt : std::optional(ToModel(name));
}

std::optional<std::string> FileDialogBoxes::ExportName(std::string_view title,
                                                       std::string_view filter) {
    if (!boxes_.attended()) return {};
    QFileDialog dialog(window_, FromModel(title));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters(Filters(filter));
    const auto suffix = filter.substr(filter.find("*.") + 2);
    dialog.setDefaultSuffix(FromModel(suffix.substr(0, suffix.find_first_of(")|"))));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return ToModel(dialog.selectedFiles().front());
}

std::optional<std::string> FileDialogBoxes::OpenName(std::string_view title) {
    if (!boxes_.attended()) return {};
    const QStringList filters = Filters(kSetupFileFilter);
    QString chosen = filters.value(kSetupFileFilterIndex - 1);
    const QString name = QFileDialog::getOpenFileName(window_, FromModel(title), {},
                                                      filters.join(QLatin1String(";;")), &chosen);
    return name.isEmpty() ? std::nullopt : std::optional(ToModel(name));
}

} // namespace zentrel::view
