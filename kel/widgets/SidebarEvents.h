#pragma once

// The events through which the sidebar and its dialog speak, all of class "SIDB" and all sent to
// the sidebar's own event target:
//   1 the user chose a row: "Kvnd" points to the chosen TKelNode (alias followed), "kmod" holds
//     the modifier keys;
//   2 the sidebar asks what the dialog shows: the dialog answers with a node the sidebar will
//     own in "ndrf", or else a BFRef in "bfrf";
//   3 the dialog's location changed: "Kvnd" points to its TKelNode.

#include <basalt/BasaltToolbox.h>

enum : EventClass { kEventClassSidebar = 0x53494442 /* "SIDB" */ };

enum : EventKind {
    kEventSidebarItemChosen = 1,
    kEventSidebarCopyClientRoot = 2,
    kEventSidebarClientRootChanged = 3,
};

enum : EventParamName {
    kEventParamSidebarNode = 0x4B766E64,    /* "Kvnd" */
    kEventParamSidebarNodeRef = 0x6E647266, /* "ndrf" */
    kEventParamSidebarBFRef = 0x62667266,   /* "bfrf" */
    kEventParamSidebar = 0x53494442,        /* "SIDB": the sidebar instance, to its items view */
};

enum : EventParamType {
    typeSidebarNode = 0x4B766E64,    /* "Kvnd": a TKelNode* */
    typeSidebarNodeRef = 0x6E647266, /* "ndrf": an OpaqueNodeRef* */
    typeSidebarBFRef = 0x62667266,   /* "bfrf": a BFRef */
    typeSidebar = 0x53494442,        /* "SIDB": a BTSidebar* */
};
