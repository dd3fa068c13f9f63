#include "kel/widgets/views/BTScopeButton.h"

#include "kel/foundation/TStringRef.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>

namespace {

constexpr ControlPartCode kPressedPart = 11;

struct ThreePieces {
    BundlePicture left, middle, right;
};

ThreePieces LoadPieces(const std::string& state) {
    auto load = [&](const char* piece) {
        return LoadBundlePicture("_internal_scope-" + state + "-" + piece);
    };
    return {load("left"), load("mid"), load("right")};
}

// Loaded on first use and kept for the process.
struct ScopeImages {
    ThreePieces press = LoadPieces("press");
    ThreePieces roll = LoadPieces("roll");
    ThreePieces select = LoadPieces("select");
};

const ScopeImages& Images() {
    static const auto* images = new ScopeImages;
    return *images;
}

BTThemeTextInfo TextInfo(BTThemeFontID font) {
    return {
        0,    kBTThemeStateActive, font, kBTThemeTextFlushLeft, 1, 0, kBTThemeTextTruncationEnd, 1,
        false};
}

BGFloat TextWidth(BCStringRef text, const BTThemeTextInfo& info) {
    BGFloat width = 0;
    if (text != nullptr)
        BTThemeGetTextDimensions(text, 0, &info, &width, nullptr, nullptr);
    return width;
}

} // namespace

BCStringRef BTScopeButton::ClassID() {
    return BCSTR("com.velmo.BTScopeButton");
}

BTScopeButton::BTScopeButton(ControlRef control) : TView(control) {
    ChangeAutoInvalidateFlags(
        kInvalidateOnActivate | kInvalidateOnHilite | kInvalidateOnEnable | kInvalidateOnValue, 0);
}

BTScopeButton::~BTScopeButton() {
    if (trackingArea != nullptr)
        BTViewDisposeTrackingArea(trackingArea);
    if (hoverHandler != nullptr)
        RemoveEventHandler(hoverHandler);
}

uint64_t BTScopeButton::GetKind() {
    return ViewKind("velm", "Scpe");
}

StatusCode BTScopeButton::Initialize(TBasaltEvent&) {
    if (StatusCode status = BTViewNewTrackingArea(GetViewRef(), nullptr, 0, &trackingArea))
        return status;
    BTViewSetMaximum(GetViewRef(), 1);
    hovering = false;
    static const EventTypeSpec kHoverEvents[] = {
        {kEventClassControl, kEventControlTrackingAreaEntered},
        {kEventClassControl, kEventControlTrackingAreaExited}};
    return InstallEventHandler(GetEventTarget(), EventHandler, std::size(kHoverEvents),
                               kHoverEvents, this, &hoverHandler);
}

StatusCode BTScopeButton::EventHandler(EventHandlerCallRef, EventRef event, void* data) {
    return static_cast<BTScopeButton*>(data)->HoverChanged(GetEventKind(event));
}

// The hover look comes only to an active window; once there it stays until the mouse leaves.
StatusCode BTScopeButton::HoverChanged(EventKind kind) {
    if (kind == kEventControlTrackingAreaEntered && BTViewIsActive(GetViewRef())) {
        hovering = true;
        Invalidate();
    } else if (kind == kEventControlTrackingAreaExited && hovering) {
        hovering = false;
        Invalidate();
    }
    return eventNotHandledErr;
}

ScopeButtonState BTScopeButton::State() const {
    if (GetControlHilite(GetViewRef()) == kPressedPart)
        return kScopePressed;
    if (BTViewGetValue(GetViewRef()) == 1)
        return kScopeSelected;
    return hovering ? kScopeHovered : kScopeIdle;
}

void BTScopeButton::GetButtonImages(ScopeButtonState state, BundlePicture* left,
                                    BundlePicture* middle, BundlePicture* right) {
    const ThreePieces& pieces = state == kScopePressed   ? Images().press
                                : state == kScopeHovered ? Images().roll
                                                         : Images().select;
    if (left != nullptr)
        *left = pieces.left;
    if (middle != nullptr)
        *middle = pieces.middle;
    if (right != nullptr)
        *right = pieces.right;
}

short BTScopeButton::HitTest(const BGPoint& point) {
    return BGRectContainsPoint(Bounds(), point) ? kPressedPart : short(kControlNoPart);
}

StatusCode BTScopeButton::GetRegion(short part, RgnHandle region) {
    if (part != kControlStructureMetaPart || region == nullptr)
        return eventNotHandledErr;
    SetRegionToBounds(region, 0);
    return noErr;
}

// Sized for the emphasised font, which is the wider: the text of a selected button fits whole
// in its picture instead of being cut.
StatusCode BTScopeButton::GetOptimalSizeSelf(BGSize* size, float*) {
    BundlePicture left;
    GetButtonImages(kScopePressed, &left, nullptr, nullptr);
    TStringRef text(BTViewCopyText(GetViewRef()), false);
    BGSize piece = left.size;
    BGFloat width =
        std::max(TextWidth(text.AsBCStringRef(), TextInfo(kBTThemeFontScope)),
                 TextWidth(text.AsBCStringRef(), TextInfo(kBTThemeFontScopeEmphasized)));
    *size = {2 * piece.width + std::ceil(width), piece.height};
    return noErr;
}

void BTScopeButton::Draw(RgnHandle, BGContextRef context) {
    ScopeButtonState state = State();
    bool pictured = state != kScopeIdle;
    BTThemeTextInfo info = TextInfo(pictured ? kBTThemeFontScopeEmphasized : kBTThemeFontScope);
    TStringRef text(BTViewCopyText(GetViewRef()), false);
    BundlePicture left, middle, right;
    GetButtonImages(state, &left, &middle, &right);
    // In a frame too narrow for the text, the text is cut and the picture stays whole.
    BGFloat room = Bounds().size.width - left.size.width - right.size.width + 2.0;
    BGFloat width = std::min(TextWidth(text.AsBCStringRef(), info), std::max<BGFloat>(room, 0));
    BGRect leftRect = {{0, 0}, left.size};
    BGRect middleRect = BGRectMake(BGRectGetMaxX(leftRect), 0, width - 2.0, middle.size.height);
    BGRect rightRect = {{BGRectGetMaxX(middleRect), 0}, right.size};
    if (pictured) {
        BTViewDrawBGImage(context, &leftRect, left.image);
        BTViewDrawBGImage(context, &middleRect, middle.image);
        BTViewDrawBGImage(context, &rightRect, right.image);
    }
    bool active = BTViewIsActive(GetViewRef());
    BGFloat grey = pictured ? (active ? 1.0 : 0.9) : (active ? 0.25 : 0.35);
    BGContextSetGrayFillColor(context, grey, 1.0);
    BGRect textRect = BGRectMake(middleRect.origin.x - 1.0, 0, width, middleRect.size.height);
    if (!text.IsNil())
        BTThemeDrawTextBox(text.AsBCStringRef(), &textRect, &info, context);
}

StatusCode _BTScopeButtonRegisterClass() {
    return RegisterViewClassOnce<BTScopeButton>();
}
