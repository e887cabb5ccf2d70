#include "screens/qt/wire_view.h"

#include <algorithm>

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

#include "screens/qt/captions.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/scroll_page.h"
#include "screens/qt/theme.h"
#include "screens/qt/wire_diagram.h"
#include "screens/qt/wire_table.h"
#include "screens/wire_screen.h"

namespace zentrel::view {

namespace {

constexpr int kFrame = 33; // ms between two pictures of a burst that runs
constexpr int kUsualBits = 24;
constexpr int kMostBits = 64; // Of longer words the column shows the upper end.

void PlainTable(QTableView& table) {
    table.setShowGrid(false);
    table.setAlternatingRowColors(true);
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setSelectionMode(QAbstractItemView::SingleSelection);
    table.setWordWrap(false);
    table.setTabKeyNavigation(false);
    table.setCornerButtonEnabled(false);
    table.setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    QHeaderView* rows = table.verticalHeader();
    rows->hide();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setDefaultSectionSize(Metrics::Now().textHeight + Metrics::Now().half);
    table.horizontalHeader()->setHighlightSections(false);
}

bool AtEnd(const QTableView& table) {
    const QScrollBar* bar = table.verticalScrollBar();
    return bar->value() >= bar->maximum();
}

} // namespace

WireView::WireView(const Hand& hand, WireScreen& model)
    : QWidget(nullptr, Qt::Window), hand_(hand), model_(model) {
    setObjectName(QStringLiteral("wireMonitor"));
    later_.setSingleShot(true);
    connect(&later_, &QTimer::timeout, this, [this] { Sync(); });
}

void WireView::Build() {
    const Metrics& m = Metrics::Now();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(m.Units(2), m.Units(2), m.Units(2), m.Units(2));
    column->setSpacing(m.unit);
    column->addWidget(MakeBar());
    auto* halves = new QSplitter(Qt::Vertical, this);
    halves->setChildrenCollapsible(false);
    halves->setHandleWidth(m.unit);
    halves->addWidget(MakeTable());
    halves->addWidget(MakeLower());
    halves->setStretchFactor(0, 3);
    halves->setStretchFactor(1, 2);
    column->addWidget(halves, 1);
    for (const QKeySequence::StandardKey key : {QKeySequence::Find, QKeySequence::Close}) {
        auto* shortcut = new QShortcut(key, this);
        connect(shortcut, &QShortcut::activated, this, [this, key] {
            if (key == QKeySequence::Close) {
                hand_.Do([this] { model_.Close(); });
            } else {
                filter_->setFocus();
                filter_->selectAll();
            }
        });
    }
    QSize size(m.Units(180), m.Units(104));
    if (const QScreen* at = screen()) size = size.boundedTo(at->availableSize() * 0.95);
    resize(size);
    table_->setFocus();
}

PushButton* WireView::AddButton(Button& element, const char* name, const QString& tip,
                                Hand::Action click, QWidget* parent) {
    auto* button = new PushButton(hand_, element, std::move(click), parent);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(tip);
    buttons_.push_back(button);
    return button;
}

QWidget* WireView::MakeBar() {
    auto* bar = new QWidget(this);
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Metrics::Now().unit);
    filter_ = new QLineEdit(bar);
    filter_->setObjectName(QStringLiteral("wireFilter"));
    filter_->setFixedHeight(Metrics::Now().boxHeight);
    filter_->setTextMargins(Metrics::Now().half, 0, 0, 0);
    filter_->setPlaceholderText(tr("Filter by register, field or pin"));
    filter_->setAccessibleName(tr("Filter"));
    filter_->setToolTip(tr("<qt>A register, a field in it, a pin, \"usb\", \"refused\", the "
                           "beginning of a word (\"0x12\"). All that is typed has to fit.</qt>"));
    filter_->setClearButtonEnabled(true);
    connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
        hand_.Do([&] {
            model_.txtFilter.Text = ToModel(text);
            model_.FilterTyped();
        });
    });
    row->addWidget(filter_, 2);
    row->addWidget(AddButton(
        model_.cmdPause, "wirePause", tr("Keep the list as it is for a while"),
        [this] { model_.ClickPause(); }, bar));
    row->addWidget(AddButton(
        model_.cmdClear, "wireClear", tr("Forget what was recorded"),
        [this] { model_.ClickClear(); }, bar));
    row->addStretch(1);
    count_ = new CaptionLabel(model_.lblCount, CaptionLabel::Tone::Muted,
                              Qt::AlignRight | Qt::AlignVCenter, bar);
    count_->setMinimumWidth(Metrics::Now().Units(24));
    row->addWidget(count_, 2);
    row->addWidget(AddButton(
        model_.cmdSaveVcd, "wireSaveVcd",
        tr("Save the lines of all listed records for a logic analyser"),
        [this] { model_.ClickSaveVcd(); }, bar));
    row->addWidget(AddButton(
        model_.cmdSaveCsv, "wireSaveCsv", tr("Save the list as a table"),
        [this] { model_.ClickSaveCsv(); }, bar));
    return bar;
}

QWidget* WireView::MakeTable() {
    table_ = new QTableView(this);
    table_->setObjectName(QStringLiteral("wireTable"));
    table_->setAccessibleName(tr("What went over the wire, newest last"));
    PlainTable(*table_);
    rows_ = new WireTableModel(model_, table_);
    table_->setModel(rows_);
    table_->setItemDelegateForColumn(WireScreen::kBits, new WireBitsDelegate(model_, table_));
    SizeColumns();
    connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        const QModelIndexList rows = table_->selectionModel()->selectedRows();
        hand_.Do([&] { model_.Select(rows.isEmpty() ? -1 : rows.front().row()); });
    });
    return table_;
}

void WireView::SizeColumns() {
    static constexpr struct {
        WireScreen::Column column;
        const char* sample;
    } kSamples[] = {
        {WireScreen::kTime, "00:00:00.000000"},
        {WireScreen::kRoute, "Route"},
        {WireScreen::kRegister, "Pin configuration"},
        {WireScreen::kPins, "CE=1, SYNC=0, Trig"},
        {WireScreen::kRead, "0x000 0000"},
        {WireScreen::kRemark, "acknowledged"},
    };
    const int gap = Metrics::Now().Units(3);
    const QFontMetrics text(font());
    for (const auto& sample : kSamples)
        table_->setColumnWidth(sample.column,
                               text.horizontalAdvance(QLatin1String(sample.sample)) + gap);
    bits_ = std::max(bits_, kUsualBits);
    const int digits = (bits_ + 3) / 4;
    table_->setColumnWidth(
        WireScreen::kHex,
        QFontMetrics(MonospacedFont()).horizontalAdvance(QString(digits + digits / 4, u'0')) + gap);
    table_->setColumnWidth(WireScreen::kBits, WireBitsDelegate::WidthOf(bits_));
    table_->horizontalHeader()->setSectionResizeMode(WireScreen::kFields, QHeaderView::Stretch);
    table_->horizontalHeader()->setMinimumSectionSize(Metrics::Now().Units(6));
}

QWidget* WireView::MakeLower() {
    auto* lower = new QSplitter(Qt::Horizontal, this);
    lower->setChildrenCollapsible(false);
    lower->setHandleWidth(Metrics::Now().unit);
    auto* page = new ScrollPage(lower);
    page->setFrameShape(QFrame::StyledPanel);
    diagram_ = new WireDiagram;
    page->setWidget(diagram_);
    lower->addWidget(page);
    auto* details = new QTableView(lower);
    details->setObjectName(QStringLiteral("wireDetails"));
    details->setAccessibleName(tr("Fields, pins and packets of the record"));
    PlainTable(*details);
    details->horizontalHeader()->hide();
    details->horizontalHeader()->setStretchLastSection(true);
    details_ = new WireDetailsModel(details);
    details->setModel(details_);
    details->setColumnWidth(0, Metrics::Now().Units(22));
    lower->addWidget(details);
    lower->setStretchFactor(0, 3);
    lower->setStretchFactor(1, 1);
    lower->setSizes({Metrics::Now().Units(112), Metrics::Now().Units(46)});
    return lower;
}

void WireView::Sync() {
    if (!model_.Open) {
        if (!isHidden()) hide();
        raised_ = model_.shown();
        return;
    }
    if (table_ == nullptr) Build();
    if (TooSoon()) return;
    const Hand::Busy busy(hand_);
    model_.Refresh();
    if (const QString title = FromModel(model_.Caption); windowTitle() != title)
        setWindowTitle(title);
    if (ToModel(filter_->text()) != model_.txtFilter.Text)
        filter_->setText(FromModel(model_.txtFilter.Text));
    for (PushButton* button : buttons_)
        button->Sync();
    count_->Sync();
    SyncRows();
    SyncShown();
    if (raised_ == model_.shown() && !isHidden()) return;
    raised_ = model_.shown();
    show();
    raise();
    activateWindow();
}

// A loop of short bursts is drawn as often as an eye can follow, so that it isn't held up.
bool WireView::TooSoon() {
    const bool soon = model_.Busy() && drawn_.isValid() && drawn_.elapsed() < kFrame && !isHidden();
    if (!soon) {
        drawn_.start();
        later_.stop();
    } else if (!later_.isActive()) {
        later_.start(kFrame);
    }
    return soon;
}

void WireView::SyncRows() {
    const bool follow = AtEnd(*table_);
    const int before = rows_->rowCount();
    rows_->Sync();
    const int count = rows_->rowCount();
    if (const WireRecord* newest = model_.Row(count - 1);
        newest != nullptr && std::min<int>(newest->map->source.length, kMostBits) > bits_) {
        bits_ = std::min<int>(newest->map->source.length, kMostBits);
        SizeColumns();
    }
    const int selected = model_.SelectedRow();
    const QModelIndexList rows = table_->selectionModel()->selectedRows();
    if (selected != (rows.isEmpty() ? -1 : rows.front().row())) {
        if (selected < 0)
            table_->clearSelection();
        else
            table_->selectRow(selected);
    }
    if (follow && count != before) table_->scrollToBottom();
}

void WireView::SyncShown() {
    const WireRecord* record = model_.Shown();
    const std::uint64_t serial = record == nullptr ? 0 : record->serial;
    if (serial == shownRecord_) return;
    shownRecord_ = serial;
    diagram_->SetHint(record == nullptr
                          ? tr("Nothing was recorded yet. Whatever goes out from now on is listed.")
                          : tr("No line moved."));
    diagram_->Show(record == nullptr ? WirePicture() : PictureOf(*record),
                   FromModel(model_.ShownTitle()));
    details_->Show(model_.Details());
}

void WireView::closeEvent(QCloseEvent* event) {
    event->ignore();
    hand_.Do([this] { model_.Close(); });
}

void WireView::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) return QWidget::keyPressEvent(event);
    if (!filter_->text().isEmpty() && filter_->hasFocus())
        filter_->clear();
    else
        table_->clearSelection(); // The newest word is shown again.
}

void WireView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) update();
}

void WireView::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Theme::Now().window);
}

} // namespace zentrel::view
