#include "screens/qt/registers_view.h"

#include <algorithm>

#include <QApplication>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <QVBoxLayout>

#include "device/bit_string.h"
#include "screens/qt/bit_row.h"
#include "screens/qt/bit_ruler.h"
#include "screens/qt/brick.h"
#include "screens/qt/captions.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/readback_bar.h"
#include "screens/qt/scroll_page.h"
#include "screens/qt/theme.h"
#include "screens/registers_screen.h"

namespace zentrel::view {

namespace {

constexpr Qt::Alignment kLeft = Qt::AlignLeft | Qt::AlignVCenter;
constexpr int kWidestName = 24; // digits, before a name elides

int WidestText(const ElementArray<Label>& labels, const QFont& font, int rows) {
    const QFontMetrics metrics(font);
    int widest = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(rows) && i < labels.size(); ++i)
        widest = std::max(widest, metrics.horizontalAdvance(FromModel(labels[i].Caption)));
    return widest;
}

/// The longest hexadecimal text of a word: the words grow digits while they are edited.
QString Widest(const BitGrid& grid) {
    std::int16_t digits = RegistersScreen::kHexDigits;
    return FromModel(
        "0x" + FormatHexGrouped(BitWord::Ones(grid.bits), digits, RegistersScreen::kHexGroup));
}

int Step() {
    return Metrics::Now().boxHeight + Metrics::Now().unit;
}

} // namespace

RegistersView::RegistersView(const Hand& hand, RegistersScreen& model, QWidget* parent)
    : ScreenView(parent), hand_(hand), model_(model) {
    header_ = new QWidget(this);
    headerContent_ = new QWidget(header_);
    order_ = new PushButton(
        hand, model.cmdBitOrder, [&model] { model.ClickBitOrder(); }, headerContent_);
    order_->setObjectName(QStringLiteral("cmdBitOrder"));
    order_->setToolTip(tr("Which bit stands on the left"));
    ruler_ = new BitRuler({model.lblTens, 0}, {model.lblOnes, 0}, headerContent_);
    page_ = new ScrollPage(this);
    page_->setWidgetResizable(false);
    content_ = new PageContent;
    page_->setWidget(content_);
    content_->setAutoFillBackground(false); // It paints itself.
    readback_ = new ReadbackBar(hand, model, this);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(header_);
    column->addWidget(page_, 1);
    column->addWidget(readback_);
    connect(page_->horizontalScrollBar(), &QScrollBar::valueChanged, headerContent_,
            [this](int value) { headerContent_->move(-value, 0); });
}

RegistersView::~RegistersView() = default;

BitGrid RegistersView::Grid() const {
    BitGrid grid;
    grid.lsbFirst = !model_.MsbFirst();
    const std::string& text = model_.txtRegBits.empty() ? std::string() : model_.txtRegBits[0].Text;
    grid.bits = text.empty() ? 0 : static_cast<int>(text.size() + 2) / 3;
    const int width = static_cast<int>(text.size());
    for (int column = 0; model_.RowCount() > 0 && column < grid.bits; ++column) {
        const int position = column * 3;
        if (position <= width && model_.InControlBits(0, position)) ++grid.controlBits;
    }
    return grid;
}

void RegistersView::Rebuild() {
    const Hand::Busy busy(hand_);
    // The focus isn't handed round among those that go.
    if (content_->isAncestorOf(window()->focusWidget())) setFocus();
    DiscardChildren(*content_);
    rows_.clear();
    secondRuler_ = nullptr;
    caretRow_ = -1;
    const auto count = static_cast<std::size_t>(model_.RowCount());
    rows_.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        rows_.push_back(MakeRow(i));
    if (model_.HasSecondRuler()) {
        secondRuler_ = new BitRuler({model_.lblTens, 1}, {model_.lblOnes, 1}, content_);
        secondRuler_->show();
    }
    hexValue_ = new CaptionLabel(model_.lblHexValue, CaptionLabel::Tone::Muted, kLeft, content_);
    hexValue_->setObjectName(QStringLiteral("lblHexValue"));
    hexDisplay_ = new CaptionLabel(model_.lblHexDisplay, CaptionLabel::Tone::Bits, kLeft, content_);
    hexDisplay_->setObjectName(QStringLiteral("lblHexDisplay"));
}

std::vector<std::string> RegistersView::Names() const {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < static_cast<std::size_t>(model_.RowCount()); ++i)
        names.push_back(model_.lblRegName[i].Caption);
    return names;
}

RegistersView::Row RegistersView::MakeRow(std::size_t i) {
    const int row = static_cast<int>(i);
    RegistersScreen& model = model_;
    const BitRow::Actions actions{
        [&model, row, i] { model.ClickBits(row, model.txtRegBits[i].SelStart); },
        [&model, row] { model.DoubleClickBits(row); },
        [&model, row](BitRow::Arrow arrow) {
            model.KeyDown(row, static_cast<RegistersScreen::Arrow>(arrow));
        },
        [&model, row](char key) { model.KeyPress(row, key); }};
    Row r{};
    r.name = new CaptionLabel({model.lblRegName, i}, CaptionLabel::Tone::Strong, kLeft, content_);
    r.name->setObjectName(IndexedName("lblRegName", i));
    r.bits = new BitRow(hand_, {model.txtRegBits, i}, actions, content_);
    r.bits->setObjectName(IndexedName("txtRegBits", i));
    r.load = new PushButton(
        hand_, {model.cmdLoadReg, i}, [&model, row] { model.ClickLoad(row); }, content_);
    r.load->setObjectName(IndexedName("cmdLoadReg", i));
    r.name2 = new CaptionLabel({model.lblRegName2, i}, CaptionLabel::Tone::Muted, kLeft, content_);
    r.name2->setObjectName(IndexedName("lblRegName2", i));
    r.hex = new CaptionLabel({model.lblHexRegValue, i}, CaptionLabel::Tone::Bits, kLeft, content_);
    r.hex->setObjectName(IndexedName("lblHexRegValue", i));
    r.read = new PushButton(
        hand_, {model.cmdReadback, i}, [&model, row] { model.ClickRead(row); }, content_);
    r.read->setObjectName(IndexedName("cmdReadback", i));
    for (QWidget* explained : std::initializer_list<QWidget*>{r.name, r.bits, r.name2, r.hex})
        explained->installEventFilter(this);
    const QString name = FromModel(model_.lblRegName[i].Caption);
    r.bits->setAccessibleName(tr("Bits of %1").arg(name));
    r.load->setAccessibleName(tr("Load %1").arg(name));
    r.read->setAccessibleName(tr("Read %1").arg(name));
    return r;
}

RegistersView::Columns RegistersView::Measure() const {
    const Metrics& m = Metrics::Now();
    const int rows = model_.RowCount();
    Columns c;
    c.nameLeft = m.Units(2);
    const int names =
        std::min(WidestText(model_.lblRegName, UiFont(0, true), rows), m.DigitsWidth(kWidestName));
    c.nameWidth = std::max(names + m.unit, order_->sizeHint().width());
    c.bitsLeft = c.nameLeft + c.nameWidth + m.Units(2);
    c.bitsWidth = grid_.Width();
    c.loadLeft = c.bitsLeft + c.bitsWidth + m.Units(2);
    c.loadWidth = m.Units(7);
    c.name2Left = c.loadLeft + c.loadWidth + m.Units(2);
    c.name2Width =
        std::min(WidestText(model_.lblRegName2, UiFont(), rows) + 2, m.DigitsWidth(kWidestName));
    c.hexLeft = c.name2Left + c.name2Width + m.Units(2);
    c.hexWidth = m.unit + std::max(WidestText(model_.lblHexRegValue, MonospacedFont(), rows),
                                   QFontMetrics(MonospacedFont()).horizontalAdvance(Widest(grid_)));
    c.readLeft = c.hexLeft + c.hexWidth + m.Units(2);
    const bool read = !model_.cmdReadback.empty() && model_.cmdReadback[0].Visible;
    c.readWidth = read ? m.Units(7) : 0;
    c.valueLeft = (read ? c.readLeft + c.readWidth : c.hexLeft + c.hexWidth) + m.Units(2);
    const int caption = QFontMetrics(UiFont()).horizontalAdvance(tr("Hex Value"));
    c.valueWidth = std::max(c.hexWidth, caption + m.unit);
    c.right = c.valueLeft + c.valueWidth + m.unit;
    return c;
}

void RegistersView::Place() {
    const int ruler = ruler_->sizeHint().height() + Metrics::Now().unit;
    int top = Metrics::Now().unit;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (secondRuler_ && i == RegistersScreen::kSecondRulerRow) {
            secondRuler_->setGeometry(columns_.bitsLeft, top + Metrics::Now().half,
                                      columns_.bitsWidth, secondRuler_->sizeHint().height());
            top += ruler;
        }
        PlaceRow(rows_[i], top);
        top += Step();
    }
    content_->resize(columns_.right, top + Metrics::Now().unit);
    PlaceHeader();
}

void RegistersView::PlaceRow(const Row& row, int top) const {
    const int height = Metrics::Now().boxHeight;
    const Columns& c = columns_;
    row.name->setGeometry(c.nameLeft, top, c.nameWidth, height);
    row.bits->setGeometry(c.bitsLeft, top, c.bitsWidth, height);
    row.load->setGeometry(c.loadLeft, top, c.loadWidth, height);
    row.name2->setGeometry(c.name2Left, top, c.name2Width, height);
    row.hex->setGeometry(c.hexLeft, top, c.hexWidth, height);
    row.read->setGeometry(c.readLeft, top, c.readWidth, height);
}

void RegistersView::PlaceHeader() {
    const Metrics& m = Metrics::Now();
    const Columns& c = columns_;
    const int ruler = ruler_->sizeHint().height();
    const int height = ruler + m.unit + m.half;
    if (header_->height() != height) header_->setFixedHeight(height);
    headerContent_->resize(std::max(c.right, this->width()), height);
    // As wide as short names; above long ones it ends where they do.
    const int width = std::min(c.nameWidth, order_->sizeHint().width() + m.Units(2));
    order_->setGeometry(c.nameLeft + c.nameWidth - width, m.unit + (ruler - order_->height()) / 2,
                        width, order_->height());
    ruler_->setGeometry(c.bitsLeft, m.unit, c.bitsWidth, ruler);
}

// The value of the row that is being edited stands at its right end.
void RegistersView::PlaceHexValue() {
    const auto row = static_cast<std::size_t>(std::max(model_.CaretRow(), 0));
    if (row >= rows_.size()) return;
    const Metrics& m = Metrics::Now();
    const int middle = rows_[row].bits->geometry().center().y() + 1;
    const QRect below(columns_.valueLeft, middle, columns_.valueWidth, m.textHeight);
    if (hexDisplay_->geometry() == below) return;
    hexDisplay_->setGeometry(below);
    hexValue_->setGeometry(below.translated(0, -m.textHeight));
}

void RegistersView::Sync() {
    const Hand::Busy busy(hand_);
    const bool rebuilt = layout_ != model_.layout();
    if (rebuilt) {
        layout_ = model_.layout();
        // Another order of the bits, or a device with the same registers, keeps the rows.
        if (auto names = Names(); names != names_ || !hexValue_) {
            names_ = std::move(names);
            Rebuild();
        }
    }
    page_->SetHint(rows_.empty() ? tr("No registers. Devices are chosen in the menu Select Device.")
                                 : QString());
    if (header_->isHidden() != rows_.empty()) header_->setVisible(!rows_.empty());
    SyncHeader();
    SyncRows();
    const bool reads = !model_.cmdReadback.empty() && model_.cmdReadback[0].Visible;
    if (rebuilt || reads != (columns_.readWidth > 0)) {
        columns_ = Measure();
        Place();
    }
    hexValue_->Sync();
    hexDisplay_->Sync();
    PlaceHexValue();
    readback_->Sync();
    FollowCaret();
}

void RegistersView::SyncHeader() {
    grid_ = Grid();
    order_->Sync();
    const RegistersScreen::MarkerPlace& marker = model_.Marker();
    const bool shown = marker.row >= 0 && model_.shpBitHiLite.Visible;
    ruler_->Sync(grid_, model_.shpBitHiLite, shown && marker.ruler == 0 ? marker.column : -1);
    if (secondRuler_)
        secondRuler_->Sync(grid_, model_.shpBitHiLite,
                           shown && marker.ruler == 1 ? marker.column : -1);
}

void RegistersView::SyncRows() {
    int number = 0;
    for (const Row& row : rows_) {
        row.name->Sync();
        row.bits->Sync(grid_, model_.UnsentBits(number++));
        row.load->Sync();
        row.name2->Sync();
        row.hex->Sync();
        row.read->Sync();
    }
}

void RegistersView::FollowCaret() {
    const int row = model_.CaretRow();
    const int column = model_.Marker().column;
    if (row == caretRow_ && column == caretColumn_) return;
    const bool otherRow = row != caretRow_;
    caretRow_ = row;
    caretColumn_ = column;
    if (row < 0 || row >= static_cast<int>(rows_.size())) return;
    BitRow* bits = rows_[static_cast<std::size_t>(row)].bits;
    QWidget* focus = window()->focusWidget();
    if (otherRow && focus && content_->isAncestorOf(focus) && dynamic_cast<BitRow*>(focus))
        bits->setFocus(Qt::OtherFocusReason);
    const QRect cell = bits->CaretCell().translated(bits->pos());
    page_->ensureVisible(cell.center().x(), cell.center().y(), Metrics::Now().Units(4), Step());
}

bool RegistersView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ToolTip) return ScreenView::eventFilter(watched, event);
    const auto* help = static_cast<QHelpEvent*>(event);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const Row& row = rows_[i];
        const int number = static_cast<int>(i);
        if (watched == row.name || watched == row.name2 || watched == row.hex)
            QToolTip::showText(help->globalPos(), TipText(model_.TipOn(number)), row.name);
        if (watched == row.bits)
            QToolTip::showText(
                help->globalPos(),
                TipText(model_.TipOnBit(number, grid_.BitOf(grid_.ColumnAt(help->pos().x())))),
                row.bits);
    }
    return true;
}

void RegistersView::resizeEvent(QResizeEvent* event) {
    ScreenView::resizeEvent(event);
    PlaceHeader();
}

void RegistersView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Theme::Now().surface);
    painter.fillRect(QRect(0, header_->height() - 1, width(), 1), Theme::Now().line);
}

} // namespace zentrel::view
