#pragma once

// Text as it is drawn, for drivers that find things by what they show, as a person reads a
// screen. Nothing is kept unless a recording is alive; main thread only.

#include <basalt/BasaltGraphics.h>
#include <cairo.h>
#include <string>
#include <string_view>
#include <vector>

namespace basalt::graphics {

struct ShownText {
    std::string utf8;
    cairo_surface_t* surface; // what it was drawn on
    BGRect box;               // in that surface's device pixels
};

// Records every text drawn while it lives; recordings do not nest.
class ShownTextRecording {
public:
    ShownTextRecording();
    ShownTextRecording(const ShownTextRecording&) = delete;
    ShownTextRecording& operator=(const ShownTextRecording&) = delete;
    ~ShownTextRecording();
    const std::vector<ShownText>& Texts() const;
};

// Called for every text drawn into its box (user space of cr); does nothing without a recording.
void NoteShownText(cairo_t* cr, std::string_view utf8, BGRect box);

} // namespace basalt::graphics
