#include "basalt/graphics/ShownText.h"

#include <algorithm>
#include <optional>

namespace basalt::graphics {
namespace {

std::optional<std::vector<ShownText>>& Recorded() {
    static std::optional<std::vector<ShownText>> recorded;
    return recorded;
}

} // namespace

ShownTextRecording::ShownTextRecording() {
    Recorded().emplace();
}

ShownTextRecording::~ShownTextRecording() {
    Recorded().reset();
}

const std::vector<ShownText>& ShownTextRecording::Texts() const {
    return *Recorded();
}

void NoteShownText(cairo_t* cr, std::string_view utf8, BGRect box) {
    if (!Recorded()) {
        return;
    }
    double x1 = BGRectGetMinX(box), y1 = BGRectGetMinY(box);
    double x2 = BGRectGetMaxX(box), y2 = BGRectGetMaxY(box);
    cairo_user_to_device(cr, &x1, &y1);
    cairo_user_to_device(cr, &x2, &y2);
    const BGRect device =
        BGRectMake(std::min(x1, x2), std::min(y1, y2), std::abs(x2 - x1), std::abs(y2 - y1));
    Recorded()->push_back({std::string(utf8), cairo_get_target(cr), device});
}

} // namespace basalt::graphics
