#include "platform/form/ss_tab.h"

namespace cp::form {

SSTab::SSTab(ControlContainer& container, std::string name, int index, int tabs)
    : Control(container, std::move(name), index) {
  if (tabs < 1) RaiseInvalidValue();
  captions_.resize(tabs);
}

void SSTab::setTabs(int tabs) {
  if (tabs < 1) RaiseInvalidValue();
  if (tabs == Tabs()) return;
  captions_.resize(tabs);
  NotifyChanged("Tabs");
  if (tab_ >= tabs) setTab(tabs - 1);
}

const std::string& SSTab::TabCaption(int tab) const {
  if (tab < 0 || tab >= Tabs()) RaiseInvalidArrayIndex();
  return captions_[tab];
}

void SSTab::setTabCaption(int tab, std::string caption) {
  if (tab < 0 || tab >= Tabs()) RaiseInvalidArrayIndex();
  if (captions_[tab] == caption) return;
  captions_[tab] = std::move(caption);
  NotifyChanged("TabCaption");
}

void SSTab::setTab(int tab) {
  if (tab < 0 || tab >= Tabs()) RaiseInvalidValue();
  if (tab == tab_) return;
  const int previous = tab_;
  tab_ = tab;
  NotifyChanged("Tab");
  Click.Fire(previous);
}

}  // namespace cp::form
