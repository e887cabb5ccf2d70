#pragma once

#include <map>
#include <memory>
#include <string_view>

#include "screens/qt/hand.h"
#include "screens/qt/screen_view.h"
#include "synth/pll.h"

namespace zentrel::view {

class DiagramCanvas;
class DiagramToggle;
class EntryBox;
class PushButton;
class ScrollPage;

/// The tab of one PLL: its block diagram with the entries on it.
class PllView : public ScreenView {
  public:
    /// `pll` stays alive with the view, whatever becomes of the device.
    PllView(const Hand& hand, std::shared_ptr<cPLL> pll, QWidget* parent);

    void Sync() override;

  private:
    using Routine = void (*)(cPart& part, int i);

    /// `routine` on this PLL; nothing for none.
    Hand::Action Action(Routine routine) const;
    void AddBox(std::string_view name, const QString& accessible);
    void AddToggle(std::string_view name, const QString& accessible);
    void AddButton();
    /// The object name of an element: its own with the PLL's position in brackets.
    QString NameOf(std::string_view element) const;
    void PlaceWidgets(const std::map<std::string_view, QRect>& places);
    void SyncTips();
    void RevealFocus(QWidget* widget);

    const Hand& hand_;
    std::shared_ptr<cPLL> pll_;
    int position_;
    ScrollPage* page_;
    DiagramCanvas* canvas_;
    std::map<std::string_view, EntryBox*> boxes_;
    std::map<std::string_view, DiagramToggle*> toggles_;
    PushButton* bits_ = nullptr;
};

/// The page of tab `tab` when it is a PLL's, else null.
ScreenView* MakePllPage(const Hand& hand, cPart& part, int tab, QWidget* parent);

} // namespace zentrel::view
