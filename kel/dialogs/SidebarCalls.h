#pragma once

// The calls through which a browse dialog reaches its sidebar view. The sidebar's view classes
// live with the location widgets and may be absent from a build of the dialogs alone, so the
// calls are weak: a null function is treated as a window without a sidebar.

#include "basalt/nodes/NodeProperties.h"

#include <basalt/BasaltToolbox.h>

// Events between the dialog and its sidebar. Picked (1) and asks-current (2) come from the
// sidebar; root-changed (3) goes to it. "Kvnd" carries a pointer to a TKelNode, "ndrf" the
// answer of kind 2, a node reference the sidebar takes over.
constexpr EventClass kSidebarEventClass = NodeCode("SIDB");
constexpr EventKind kSidebarPicked = 1;
constexpr EventKind kSidebarAsksCurrent = 2;
constexpr EventKind kSidebarRootChanged = 3;
constexpr EventParamName kSidebarNodeParam = NodeCode("Kvnd");
constexpr EventParamName kSidebarAnswerParam = NodeCode("ndrf");

class TNodeFilter;

StatusCode _BTSidebarSetFilter(BTViewRef view, const TNodeFilter* filter) __attribute__((weak));
StatusCode _BTSidebarConstrainFrame(BTViewRef view, BGRect* frame) __attribute__((weak));
