#include "screens/qt/pll_view.h"

#include <QApplication>
#include <QVBoxLayout>

#include "device/part.h"
#include "device/text.h"
#include "screens/field_tip.h"
#include "screens/qt/brick.h"
#include "screens/qt/captions.h"
#include "screens/qt/diagram_toggle.h"
#include "screens/qt/entry_box.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/pll_diagram.h"
#include "screens/qt/scroll_page.h"
#include "screens/qt/spinner.h"
#include "synth/frequency_entry.h"
#include "synth/pll_toggles.h"
#include "synth/stepping.h"

namespace zentrel::view {

namespace {

/// An entry of the diagram, in the order in which the Tab key walks: along the signal.
struct Stop {
    std::string_view name;
    const char* accessible;
};
constexpr Stop kStops[] = {
    {"txtOsc", "Reference frequency in MHz"},
    {"lblDoubler", "Doubler"},
    {"txtRCounter", "R counter"},
    {"txtFpd", "Phase detector frequency in kHz"},
    {"lblPDPol", "Phase detector polarity"},
    {"lblCPGain", "Charge pump gain"},
    {"lblCPState", "Charge pump state"},
    {"txtVCO", "VCO frequency in MHz"},
    {"pllManualDivide", "Extra divider"},
    {"lblNPrescale", "Prescaler"},
    {"txtNCounter", "N counter"},
    {"txtFractNum", "Numerator of the fraction"},
    {"txtFractDen", "Denominator of the fraction"},
    {"txtOUT0_DIV", "Divider of output 0"},
    {"txtOUT0", "Frequency of output 0 in MHz"},
    {"txtOUT1_DIV", "Divider of output 1"},
    {"txtOUT1", "Frequency of output 1 in MHz"},
};

/// A value that clicks switch. `other`: what the other mouse buttons do.
struct PllToggle {
    std::string_view name;
    Label PllPanel::*element;
    void (*click)(cPart& part, int i);
    void (*other)(cPart& part, int i);
};
constexpr PllToggle kToggles[] = {
    {"lblDoubler", &PllPanel::lblDoubler, lblDoubler_Click, nullptr},
    {"lblNPrescale", &PllPanel::lblNPrescale, lblNPrescale_Click, nullptr},
    {"lblPDPol", &PllPanel::lblPDPol, lblPDPol_Click, nullptr},
    {"lblCPGain", &PllPanel::lblCPGain,
     [](cPart& part, int i) { lblCPGain_MouseUp(part, i, true); },
     [](cPart& part, int i) { lblCPGain_MouseUp(part, i, false); }},
    {"lblCPState", &PllPanel::lblCPState, lblCPState_Click, nullptr},
};

const PllToggle* FindToggle(std::string_view name) {
    for (const PllToggle& toggle : kToggles)
        if (toggle.name == name) return &toggle;
    return nullptr;
}

/// The spinner in the box of that name: "spnRCounter" belongs to "txtRCounter".
const PllSpinner* SpinnerOf(std::string_view box) {
    return FindPllSpinner("spn" + std::string(box.substr(3)));
}

/// What a frequency box is, and the carrier of its limits.
struct Range {
    std::string_view box, unit;
    Label PllPanel::*limits;
};
constexpr Range kRanges[] = {
    {"txtOsc", "MHz", &PllPanel::lblOSC_Range},
    {"txtFpd", "kHz", &PllPanel::lblFpd_Range},
    {"txtVCO", "MHz", &PllPanel::lblVCO_Range},
};

const Range* FindRange(std::string_view box) {
    for (const Range& range : kRanges)
        if (range.box == box) return &range;
    return nullptr;
}

/// The field whose value stands in a box; empty for what is computed.
std::string FieldOf(const cPLL& pll, std::string_view name) {
    if (name == "txtRCounter") return pll.RCounterName();
    if (name == "txtNCounter") return pll.NCounterName();
    if (const PllToggle* toggle = FindToggle(name)) return (pll.panel.*toggle->element).Tag;
    for (const std::string_view box : {"txtFractNum", "txtFractDen", "txtOUT0_DIV", "txtOUT1_DIV"})
        if (box == name) return (pll.panel.*FindPllBox(name)->element).Tag;
    return {};
}

/// What there is to know about an entry; a broken limit comes first, in words.
QString TipOf(const cPLL& pll, std::string_view name, const QString& accessible) {
    std::string text;
    for (const PlanFault& fault : pll.panel.faults)
        if (fault.element == name) text += fault.text + "\n\n";
    const PllBox* box = FindPllBox(name);
    if (const Range* range = FindRange(name))
        text += FrequencyTip(ToModel(accessible), (pll.panel.*box->element).Text, range->unit,
                             pll.panel.*range->limits);
    else if (const std::string field = FieldTip(pll.Part(), FieldOf(pll, name)); !field.empty())
        text += ToModel(accessible) + "\n" + field;
    else
        text += ToModel(accessible) + (box ? "\nNow " + (pll.panel.*box->element).Text : "");
    if (name == "lblCPGain") text += "\nLeft button: up. Right button: down.";
    return TipText(text);
}

} // namespace

PllView::PllView(const Hand& hand, std::shared_ptr<cPLL> pll, QWidget* parent)
    : ScreenView(parent), hand_(hand), pll_(std::move(pll)), position_(pll_->IDnum()),
      page_(new ScrollPage(this)), canvas_(new DiagramCanvas) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(page_);
    page_->setWidget(canvas_);
    for (const Stop& stop : kStops) {
        const QString accessible = QString::fromUtf8(stop.accessible);
        if (FindToggle(stop.name))
            AddToggle(stop.name, accessible);
        else
            AddBox(stop.name, accessible);
    }
    AddButton();
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { RevealFocus(now); });
}

PllView::~PllView() {
    disconnect(qApp, nullptr, this, nullptr); // The boxes give up the focus while they go.
}

Hand::Action PllView::Action(Routine routine) const {
    if (!routine) return {};
    return [&part = pll_->Part(), at = position_, routine] { routine(part, at); };
}

QString PllView::NameOf(std::string_view element) const {
    return IndexedName(std::string(element).c_str(), static_cast<std::size_t>(position_));
}

void PllView::AddBox(std::string_view name, const QString& accessible) {
    const PllBox* entry = FindPllBox(name);
    if (!entry) return;
    EntryBox::Actions actions{.enter = Action(entry->enter), .leave = Action(entry->leave)};
    const PllSpinner* spinner = SpinnerOf(name);
    if (spinner) actions.stepUp = Action(spinner->up), actions.stepDown = Action(spinner->down);
    PllPanel& panel = pll_->panel;
    auto* box = new EntryBox(hand_, panel.*entry->element, std::move(actions), canvas_);
    box->setObjectName(NameOf(name));
    box->setAccessibleName(accessible);
    if (spinner) {
        auto* buttons = new SpinnerButtons(hand_, panel.*spinner->element, Action(spinner->up),
                                           Action(spinner->down), box);
        buttons->setObjectName(NameOf(spinner->name));
        buttons->setAccessibleName(accessible);
        box->Attach(buttons);
    }
    boxes_[entry->name] = box;
}

void PllView::AddToggle(std::string_view name, const QString& accessible) {
    const PllToggle* entry = FindToggle(name);
    auto* toggle = new DiagramToggle(hand_, pll_->panel.*entry->element, Action(entry->click),
                                     Action(entry->other), canvas_);
    toggle->setObjectName(NameOf(name));
    toggle->setAccessibleName(accessible);
    toggles_[entry->name] = toggle;
}

void PllView::AddButton() {
    bits_ = new PushButton(hand_, pll_->panel.txtGetPLLBits, Action(txtGetPLLBits_Click), canvas_);
    bits_->setObjectName(NameOf("txtGetPLLBits"));
    bits_->setAccessibleName(QStringLiteral("Show the fields behind this diagram"));
}

void PllView::Sync() {
    const Hand::Busy busy(hand_);
    for (const auto& [name, box] : boxes_)
        box->Sync();
    for (const auto& [name, toggle] : toggles_)
        toggle->Sync();
    bits_->Sync();
    PllDiagram diagram = LayOutPll(*pll_);
    PlaceWidgets(diagram.places);
    const QSize needed = diagram.scene.extent().toSize() + QSize(1, 1) * Metrics::Now().Units(3);
    if (canvas_->minimumSize() != needed) canvas_->setMinimumSize(needed);
    canvas_->Show(std::move(diagram.scene));
    SyncTips();
}

void PllView::PlaceWidgets(const std::map<std::string_view, QRect>& places) {
    const auto place = [&places](std::string_view name, QWidget& widget) {
        const auto found = places.find(name);
        if (found != places.end() && widget.geometry() != found->second)
            widget.setGeometry(found->second);
    };
    for (const auto& [name, box] : boxes_)
        place(name, *box);
    for (const auto& [name, toggle] : toggles_)
        place(name, *toggle);
    place("txtGetPLLBits", *bits_);
}

void PllView::SyncTips() {
    for (const auto& [name, box] : boxes_)
        SyncTip(*box, TipOf(*pll_, name, box->accessibleName()));
    for (const auto& [name, toggle] : toggles_)
        SyncTip(*toggle, TipOf(*pll_, name, toggle->accessibleName()));
}

void PllView::RevealFocus(QWidget* widget) {
    if (!widget || !canvas_->isAncestorOf(widget)) return;
    const int margin = Metrics::Now().unit;
    page_->ensureWidgetVisible(widget, margin, margin);
}

ScreenView* MakePllPage(const Hand& hand, cPart& part, int tab, QWidget* parent) {
    for (int i = 1; i <= part.PLLs.Count(); ++i)
        if (auto pll = part.PLLs.Share(i); pll->PLLTab() == tab)
            return new PllView(hand, std::move(pll), parent);
    return nullptr;
}

} // namespace zentrel::view
