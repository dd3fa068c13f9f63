#pragma once

// Layout files: windows described in JSON, by name.
//
//   { "windows": { "<name>": { "class": "movable-modal", "attributes": ["close-box"],
//       "title": "...", "frame": [left, top, width, height],
//       "controls": [ { "kind": "push-button", "id": ["kels", 1], "frame": [x, y, w, h],
//                       "text": "OK", "value": 0, "minimum": 0, "maximum": 1,
//                       "enabled": true, "visible": true, "default": true, "cancel": false,
//                       "font": 1, "segments": 2, "single-line": true,
//                       "features": ["embedding"],
//                       "properties": { "kels/extr": 1 },
//                       "bindings": { "left": "min", "top": "min", "right": "max", "bottom": "min"
//                       }, "controls": [ ...subviews... ] } ] } } }
//
// Frames of controls are in their superview's coordinates; a window's frame is its content
// area on the screen. Every failure names the file, the window and the problem.

#include <basalt/BasaltToolbox.h>
#include <nlohmann/json.hpp>
#include <string>

struct OpaqueLayoutRef {
    std::string path;
    nlohmann::json document;
};

namespace basalt::toolbox::layout {

StatusCode Load(const std::string& path, LayoutRef* outLayout);
StatusCode BuildWindow(const OpaqueLayoutRef& layout, const std::string& name,
                       WindowRef* outWindow);
void SetLastError(std::string message);

} // namespace basalt::toolbox::layout
