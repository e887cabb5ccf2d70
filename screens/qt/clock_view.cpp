#include "screens/qt/clock_view.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QVBoxLayout>

#include "clock/clock_entry.h"
#include "clock/loop_filter.h"
#include "clock/signal_path.h"
#include "device/part.h"
#include "screens/field_tip.h"
#include "screens/qt/captions.h"
#include "screens/qt/clock_picture.h"
#include "screens/qt/diagram_scene.h"
#include "screens/qt/drop_list.h"
#include "screens/qt/entry_box.h"
#include "screens/qt/marks.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/scroll_page.h"
#include "screens/qt/spinner.h"
#include "synth/pll.h"

namespace zentrel::view {

namespace {

constexpr int kTwipsPerPixel = 15;
constexpr Qt::Alignment kRight = Qt::AlignRight | Qt::AlignVCenter;
constexpr Qt::Alignment kLeft = Qt::AlignLeft | Qt::AlignVCenter;

constexpr int kHotShapes[] = {clk_shape::kVcoTerminal, clk_shape::kExternalTerminal,
                              clk_shape::kReferenceTerminal, clk_shape::kLoopFilter,
                              clk_shape::kPll};

void WriteTwips(Element& element, const QRect& pixels) {
    element.Left = pixels.left() * kTwipsPerPixel;
    element.Top = pixels.top() * kTwipsPerPixel;
    element.Width = pixels.width() * kTwipsPerPixel;
    element.Height = pixels.height() * kTwipsPerPixel;
}

std::string Lines(const std::string& first, const std::string& second) {
    return first.empty() || second.empty() ? first + second : first + "\n" + second;
}

} // namespace

ClockView::ClockView(const Hand& hand, std::shared_ptr<cClkDist> block, frmLoopFilter& filter,
                     QWidget* parent)
    : ScreenView(parent), hand_(hand), block_(std::move(block)), panel_(block_->panel),
      filter_(filter), page_(new ScrollPage(this)), canvas_(new DiagramCanvas) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(page_);
    page_->setWidgetResizable(true);
    page_->setWidget(canvas_);
    canvas_->setAutoFillBackground(false); // It paints itself.
    canvas_->setMouseTracking(true);
    canvas_->installEventFilter(this);
    AddPath();
    for (int c = 0; c < kClockChannels; ++c)
        AddChannel(c);
}

QString ClockView::NameOf(const char* name, int channel) const {
    const int index = channel < 0 ? block_->IDnum : block_->IDnum * kClockChannels + channel;
    return IndexedName(name, static_cast<std::size_t>(index));
}

ClockView::Tip ClockView::FieldAndPath(std::function<std::string()> field, ClockItem item,
                                       int channel) const {
    return [this, field = std::move(field), item, channel] {
        return Lines(FieldTip(block_->Part(), field()), WhyOutOfPath(*block_, item, channel));
    };
}

EntryBox* ClockView::AddBox(TextBox& element, const char* name, const QString& spoken, ClockBox box,
                            int channel, Tip tip) {
    const int row = std::max(channel, 0);
    EntryBox::Actions actions{.enter = [this, box, row] { EnterClockBox(*block_, box, row); },
                              .leave = [this, box, row] { LeaveClockBox(*block_, box, row); },
                              .typed = [this, box, row] { TypeInClockBox(*block_, box, row); }};
    if (box == ClockBox::ChannelDiv) {
        actions.stepUp = [this, row] { StepChannelDivider(*block_, row, true); };
        actions.stepDown = [this, row] { StepChannelDivider(*block_, row, false); };
    } else if (box == ClockBox::InputDiv) {
        actions.stepUp = [this] { StepInputDivider(*block_, true); };
        actions.stepDown = [this] { StepInputDivider(*block_, false); };
    }
    auto* entry = new EntryBox(hand_, element, std::move(actions), canvas_);
    entry->setObjectName(NameOf(name, channel));
    entry->setAccessibleName(spoken);
    entry->installEventFilter(this);
    tips_[entry] = std::move(tip);
    boxes_.push_back(entry);
    return entry;
}

EntryBox* ClockView::AddReadBox(TextBox& element, const char* name, const QString& spoken,
                                int channel) {
    auto* box = new EntryBox(hand_, element, {}, canvas_);
    box->setObjectName(NameOf(name, channel));
    box->setAccessibleName(spoken);
    box->setReadOnly(true);
    box->setFocusPolicy(Qt::ClickFocus); // To copy from; the path's entries are what Tab visits.
    boxes_.push_back(box);
    return box;
}

void ClockView::AddSpinner(EntryBox* box, Spinner& element, const char* name, int channel,
                           const std::function<void(bool up)>& step) {
    auto* buttons = new SpinnerButtons(
        hand_, element, [step] { step(true); }, [step] { step(false); }, box);
    buttons->setObjectName(NameOf(name, channel));
    box->Attach(buttons);
}

DropList* ClockView::AddList(ListBox& element, const char* name, const QString& spoken, int channel,
                             Tip tip) {
    auto* list = new DropList(hand_, element, canvas_);
    list->setObjectName(NameOf(name, channel));
    list->setAccessibleName(spoken);
    list->installEventFilter(this);
    tips_[list] = std::move(tip);
    lists_.push_back(list);
    return list;
}

CaptionLabel* ClockView::AddValue(Label& element, const char* name, bool clickable) {
    auto* label = new CaptionLabel(element, CaptionLabel::Tone::Strong, kRight, canvas_);
    label->setObjectName(NameOf(name, -1));
    if (clickable)
        label->installEventFilter(this);
    else
        label->setAttribute(Qt::WA_TransparentForMouseEvents); // The block under it takes clicks.
    return label;
}

void ClockView::AddPath() {
    const auto frequency = [this](const char* name, const TextBox& box, Label PllPanel::*limits,
                                  ClockItem item) {
        return [this, name, &box, limits, item] {
            const cPLL* pll = block_->LinkedPLL();
            return Lines(FrequencyTip(name, box.Text, "MHz", pll ? pll->panel.*limits : Label()),
                         WhyOutOfPath(*block_, item));
        };
    };
    reference_ = AddBox(panel_.txtCLK_RefOSCfreq, "txtCLK_RefOSCfreq",
                        tr("Reference oscillator, MHz"), ClockBox::RefOSC, -1,
                        frequency("Reference oscillator", panel_.txtCLK_RefOSCfreq,
                                  &PllPanel::lblOSC_Range, ClockItem::ReferenceInput));
    readouts_ = {AddValue(panel_.clkDist_R_value, "clkDist_R_value", false),
                 AddValue(panel_.clkDist_PDF_value, "clkDist_PDF_value", false),
                 AddValue(panel_.clkDist_N_value, "clkDist_N_value", false)};
    const auto delay = [this](const ListBox& list) {
        return [this, &list] { return FieldTip(block_->Part(), list.Tag); };
    };
    delayN_ = AddList(panel_.CB_CLK_Delay_N, "CB_CLK_Delay_N", tr("Global delay of N"), -1,
                      delay(panel_.CB_CLK_Delay_N));
    delayR_ = AddList(panel_.CB_CLK_Delay_R, "CB_CLK_Delay_R", tr("Global delay of R"), -1,
                      delay(panel_.CB_CLK_Delay_R));
    AddFilter();
    vco_ = AddBox(
        panel_.txtCLK_VCOfreq, "txtCLK_VCOfreq", tr("VCO, MHz"), ClockBox::VCO, -1,
        frequency("VCO", panel_.txtCLK_VCOfreq, &PllPanel::lblVCO_Range, ClockItem::VcoInput));
    AddDivider();
    external_ = AddBox(panel_.txtCLK_ExtSRCfreq, "txtCLK_ExtSRCfreq", tr("External source, MHz"),
                       ClockBox::ExtSRC, -1,
                       frequency("External source", panel_.txtCLK_ExtSRCfreq,
                                 &PllPanel::lblVCO_Range, ClockItem::ExternalInput));
    inputMux_ = AddList(panel_.cbClkInputMux, "cbClkInputMux", tr("Input mux"), -1,
                        [this] { return FieldTip(block_->Part(), "MODE"); });
}

void ClockView::AddFilter() {
    struct Part {
        int label;
        Label& value;
        const char* name;
        std::string cClkDist::*field;
    };
    const Part parts[] = {{clk_label::kR3, panel_.clkdist_R3, "clkdist_R3", &cClkDist::LF_R3},
                          {clk_label::kR3 + 1, panel_.clkdist_C3, "clkdist_C3", &cClkDist::LF_C3C4},
                          {clk_label::kR3 + 2, panel_.clkdist_R4, "clkdist_R4", &cClkDist::LF_R4},
                          {clk_label::kC4, panel_.clkdist_C4, "clkdist_C4", &cClkDist::LF_C3C4}};
    for (std::size_t i = 0; i < filterNames_.size(); ++i) {
        const Part& part = parts[i];
        auto* name = new CaptionLabel(panel_.lblCLK[static_cast<std::size_t>(part.label)],
                                      CaptionLabel::Tone::Muted, kLeft, canvas_);
        name->setCursor(Qt::PointingHandCursor);
        name->onClick(hand_, [this, k = part.label] { Open(ClickClockLabel(*block_, k)); });
        name->SetTip(tr("A click opens the loop filter"));
        filterNames_[i] = name;
        CaptionLabel* value = AddValue(part.value, part.name, true);
        value->setFocusPolicy(Qt::TabFocus);
        value->setCursor(Qt::PointingHandCursor);
        value->onClick(hand_, [this, value] { ClickFilter(value, MouseButton::Left); });
        value->onHelp(hand_, [this, value] { ClickFilter(value, MouseButton::Right); });
        tips_[value] = [this, field = part.field] {
            return Lines(FieldTip(block_->Part(), (*block_).*field),
                         "Left button: next; right button: previous");
        };
        filterValues_[i] = value;
    }
}

void ClockView::AddDivider() {
    const auto field = [this] { return panel_.CLKtxt_InputDiv.Tag; };
    inputDivider_ = AddBox(panel_.CLKtxt_InputDiv, "CLKtxt_InputDiv", tr("VCO divider"),
                           ClockBox::InputDiv, -1, FieldAndPath(field, ClockItem::VcoDivider));
    AddSpinner(inputDivider_, panel_.CLKspn_InputDiv, "CLKspn_InputDiv", -1,
               [this](bool up) { StepInputDivider(*block_, up); });
    bypass_ = new CheckMark(hand_, panel_.CLK_VCODIV_bypass, canvas_);
    bypass_->setObjectName(NameOf("CLK_VCODIV_bypass", -1));
    bypass_->setAccessibleName(tr("Bypass the VCO divider"));
    bypass_->installEventFilter(this);
    tips_[bypass_] = [this] { return FieldTip(block_->Part(), panel_.CLK_VCODIV_bypass.Tag); };
    dividedValue_ = AddValue(divided_, "CLKtxt_InputDivOutFreq", false);
}

void ClockView::AddChannel(int c) {
    ClockChannelRow& row = panel_.channels[static_cast<std::size_t>(c)];
    const QString name = FromModel(row.lblCLKid.Caption);
    Channel& channel = channels_[static_cast<std::size_t>(c)];
    const auto field = [this, c](const std::string& (cClkDist::*of)(int) const) {
        return [this, c, of] { return ((*block_).*of)(c); };
    };
    channel.divider =
        AddBox(row.chDivText, "chDivText", tr("%1 divider").arg(name), ClockBox::ChannelDiv, c,
               FieldAndPath(field(&cClkDist::GetClkDividerName), ClockItem::ChannelDivider, c));
    AddSpinner(channel.divider, row.chDivSpnFpd, "chDivSpnFpd", c,
               [this, c](bool up) { StepChannelDivider(*block_, c, up); });
    channel.delay =
        AddList(row.divCB_CDelay, "divCB_CDelay", tr("%1 delay").arg(name), c,
                FieldAndPath(field(&cClkDist::GetClkDelayName), ClockItem::ChannelDelay, c));
    channel.mux = AddList(row.divCB_CMux, "divCB_CMux", tr("%1 mux").arg(name), c,
                          [this, c] { return FieldTip(block_->Part(), block_->GetClkMuxName(c)); });
    channel.output =
        AddList(row.divCB_od, "divCB_od", tr("%1 output").arg(name), c,
                FieldAndPath(field(&cClkDist::GetClkEnableName), ClockItem::ChannelOutput, c));
    channel.frequency =
        AddReadBox(row.divCHtxt_freq, "divCHtxt_freq", tr("%1 frequency, MHz").arg(name), c);
    channel.frequency->installEventFilter(this);
    tips_[channel.frequency] = [this, &row, c] {
        const std::string& mhz = row.divCHtxt_freq.Text;
        return Lines(mhz.empty() ? mhz : mhz + " MHz",
                     WhyOutOfPath(*block_, ClockItem::ChannelOutput, c));
    };
}

void ClockView::Sync() {
    const Hand::Busy busy(hand_);
    ClockPlan plan(panel_);
    if (plan_ != plan) {
        plan_ = plan;
        Place();
    }
    for (EntryBox* box : boxes_)
        box->Sync();
    for (DropList* list : lists_)
        list->Sync();
    bypass_->Sync();
    const TextBox& out = panel_.CLKtxt_InputDivOutFreq;
    divided_.Visible = out.Visible;
    divided_.Caption = out.Text.empty() ? std::string() : out.Text + " MHz";
    dividedValue_->Sync();
    for (CaptionLabel* label : readouts_)
        label->Sync();
    for (CaptionLabel* label : filterNames_)
        label->Sync();
    for (CaptionLabel* label : filterValues_)
        label->Sync();
    Draw();
}

void ClockView::Draw() {
    DiagramScene scene = ClockPicture(*block_, *plan_);
    for (const CaptionLabel* value : filterValues_)
        if (value->hasFocus()) scene.Outline(value->geometry().adjusted(-4, -1, 4, 1));
    canvas_->Show(std::move(scene));
}

void ClockView::Place() {
    reference_->setGeometry(plan_->reference.box);
    vco_->setGeometry(plan_->vco.box);
    external_->setGeometry(plan_->external.box);
    inputDivider_->setGeometry(plan_->inputDivider);
    bypass_->setGeometry(plan_->bypass);
    dividedValue_->setGeometry(plan_->divided.value);
    inputMux_->setGeometry(plan_->muxList);
    delayN_->setGeometry(plan_->delays[0].value);
    delayR_->setGeometry(plan_->delays[1].value);
    for (std::size_t i = 0; i < readouts_.size(); ++i)
        readouts_[i]->setGeometry(plan_->readouts[i].value);
    for (std::size_t i = 0; i < filterNames_.size(); ++i) {
        filterNames_[i]->setGeometry(plan_->filter[i].name);
        filterValues_[i]->setGeometry(plan_->filter[i].value);
    }
    PlaceChannels();
    canvas_->setMinimumSize(plan_->size);
    WriteGeometry();
}

void ClockView::PlaceChannels() {
    for (std::size_t c = 0; c < channels_.size(); ++c) {
        const ClockPlan::Row& row = plan_->rows[c];
        channels_[c].divider->setGeometry(row.divider);
        channels_[c].delay->setGeometry(row.delay);
        channels_[c].mux->setGeometry(row.mux);
        channels_[c].output->setGeometry(row.output);
        channels_[c].frequency->setGeometry(row.frequency);
    }
}

// The model decides by these rectangles what the mouse is over, and where the edit marker stands.
void ClockView::WriteGeometry() {
    const QRect hot[] = {plan_->terminals[0], plan_->terminals[1], plan_->terminals[2],
                         plan_->outerFilter, plan_->pll};
    for (std::size_t i = 0; i < std::size(hot); ++i) {
        Shape& shape = panel_.shpCLK[static_cast<std::size_t>(kHotShapes[i])];
        WriteTwips(shape, shape.Visible ? hot[i] : QRect());
    }
    WriteTwips(panel_.txtCLK_RefOSCfreq, plan_->reference.box);
    WriteTwips(panel_.txtCLK_VCOfreq, plan_->vco.box);
    WriteTwips(panel_.txtCLK_ExtSRCfreq, plan_->external.box);
    WriteTwips(panel_.CLKtxt_InputDiv, plan_->inputDivider);
    for (std::size_t c = 0; c < channels_.size(); ++c)
        WriteTwips(panel_.channels[c].chDivText, plan_->rows[c].divider);
}

void ClockView::HoverAt(const QPoint& at) {
    if (!plan_) return;
    const QRect places[] = {plan_->terminals[0], plan_->terminals[1], plan_->terminals[2],
                            plan_->outerFilter, plan_->pll};
    int over = -1;
    for (int i = 0; i < 5; ++i) {
        const Shape& shape = panel_.shpCLK[static_cast<std::size_t>(kHotShapes[i])];
        if (shape.Visible && places[i].contains(at)) over = i;
    }
    if (over == hovered_) return; // Most moves change nothing and cost nothing.
    hovered_ = over;
    canvas_->setCursor(over >= 0 ? Qt::PointingHandCursor : Qt::ArrowCursor);
    hand_.Do(
        [this, at] { HoverDiagram(*block_, at.x() * kTwipsPerPixel, at.y() * kTwipsPerPixel); });
}

bool ClockView::OnCanvas(QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseMove:
        HoverAt(static_cast<QMouseEvent*>(event)->pos());
        return false;
    case QEvent::Leave:
        HoverAt({-1, -1});
        return false;
    case QEvent::MouseButtonPress:
        canvas_->setFocus(Qt::MouseFocusReason); // A click beside the boxes leaves them.
        return false;
    case QEvent::MouseButtonRelease: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() != Qt::LeftButton) return false;
        const QPoint at = mouse->pos() * kTwipsPerPixel;
        hand_.Do([this, at] { Open(ClickDiagram(*block_, at.x(), at.y())); });
        return true;
    }
    default:
        return false;
    }
}

void ClockView::Open(OpenLoopFilter how) {
    if (how == OpenLoopFilter::No) return;
    filter_.Modal = how == OpenLoopFilter::Modal;
    filter_.Form_Load();
}

void ClockView::ClickFilter(CaptionLabel* value, MouseButton button) {
    constexpr void (*kClicks[])(cClkDist&, MouseButton) = {ClickR3, ClickC3, ClickR4, ClickC4};
    for (std::size_t i = 0; i < filterValues_.size(); ++i)
        if (filterValues_[i] == value) kClicks[i](*block_, button);
}

bool ClockView::OnFilterKey(CaptionLabel* value, int key) {
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
        hand_.Do([&] {
            ClickFilter(value, key == Qt::Key_Up ? MouseButton::Left : MouseButton::Right);
        });
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        hand_.Do([&] { Open(OpenLoopFilter::Modeless); });
        return true;
    default:
        return false;
    }
}

bool ClockView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == canvas_) return OnCanvas(event) || ScreenView::eventFilter(watched, event);
    const bool focus = event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut;
    if (focus && plan_ && dynamic_cast<CaptionLabel*>(watched)) Draw();
    if (event->type() == QEvent::KeyPress)
        if (auto* value = dynamic_cast<CaptionLabel*>(watched))
            return OnFilterKey(value, static_cast<QKeyEvent*>(event)->key());
    if (event->type() != QEvent::ToolTip) return ScreenView::eventFilter(watched, event);
    const auto tip = tips_.find(watched);
    if (tip == tips_.end()) return false;
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), TipText(tip->second()),
                       static_cast<QWidget*>(watched));
    return true;
}

ScreenView* MakeClockPage(const Hand& hand, const cPart& part, frmLoopFilter& filter, int tab,
                          QWidget* parent) {
    for (int n = 1; n <= part.ClkDists.Count(); ++n) {
        if (part.ClkDists(n).ClkDistTab == tab)
            return new ClockView(hand, part.ClkDists.Share(n), filter, parent);
    }
    return nullptr;
}

} // namespace zentrel::view
