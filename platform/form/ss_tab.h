#pragma once
// SSTab: the tabbed strip. Tabs are numbered from 0; Tab is the current one.
#include <string>
#include <vector>

#include "platform/form/control.h"

namespace cp::form {

class SSTab : public Control {
 public:
  // tabs: the number of tabs (at least 1), captions empty, tab 0 current.
  SSTab(ControlContainer& container, std::string name, int index, int tabs);
  std::string TypeName() const override { return "SSTab"; }

  int Tabs() const { return static_cast<int>(captions_.size()); }
  // Changes the number of tabs (below 1 raises 380); when the current tab disappears the
  // last one becomes current, which fires Click like any change of Tab.
  void setTabs(int tabs);
  // A tab's caption; a tab outside 0..Tabs-1 raises 381.
  const std::string& TabCaption(int tab) const;
  void setTabCaption(int tab, std::string caption);

  int Tab() const { return tab_; }
  // Makes a tab current (outside 0..Tabs-1 raises 380). A different tab is reported as "Tab"
  // and fires Click with the tab that was current before; the same tab does nothing.
  void setTab(int tab);

  Event<int /*previousTab*/> Click;

 private:
  std::vector<std::string> captions_;
  int tab_ = 0;
};

}  // namespace cp::form
