#pragma once
// Grid placement: puts the widgets of a view's controls on grids, one per area (the view, a
// frame, a page of a tab strip), row by row as qt/layouts.h plans them. Labels share a
// column; frames, tab strips and user controls alone on a row take its width and the spare
// height.
#include <functional>

#include <QWidget>

#include "platform/form/control_container.h"
#include "qt/control_kinds.h"

namespace cp {

// The widgets of a control of the container; nullptr when it has none.
using BindingLookup = std::function<ControlBinding*(const form::Control&)>;

// Lays out every control of container on view, whose widgets bindingOf gives. Call once,
// after every widget is created; tab strips get their pages here.
void PlaceRows(QWidget& view, form::ControlContainer& container, const BindingLookup& bindingOf);

}  // namespace cp
