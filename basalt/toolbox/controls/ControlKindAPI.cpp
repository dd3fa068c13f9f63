// The C calls that belong to one kind of control: search fields and scroll views.

#include "basalt/toolbox/controls/EditText.h"
#include "basalt/toolbox/controls/ScrollView.h"

using namespace basalt::toolbox;

namespace {

View* V(ControlRef ref) {
    return View::From(ref);
}

} // namespace

extern "C" {

StatusCode BTSearchFieldChangeAttributes(BTViewRef inSearchField, uint32_t inAttributesToSet,
                                         uint32_t inAttributesToClear) {
    auto* field = inSearchField != nullptr ? dynamic_cast<SearchField*>(V(inSearchField)) : nullptr;
    if (field == nullptr)
        return paramErr;
    field->attributes = (field->attributes | inAttributesToSet) & ~inAttributesToClear;
    field->SetNeedsDisplay();
    return noErr;
}

StatusCode BTSearchFieldGetAttributes(BTViewRef inSearchField, uint32_t* outAttributes) {
    auto* field = inSearchField != nullptr ? dynamic_cast<SearchField*>(V(inSearchField)) : nullptr;
    if (field == nullptr || outAttributes == nullptr)
        return paramErr;
    *outAttributes = field->attributes;
    return noErr;
}

StatusCode BTScrollViewCreate(uint32_t, BTViewRef* outView) {
    if (outView == nullptr)
        return paramErr;
    auto view = MakeView(kControlKindScrollView);
    HoldLoose(view);
    *outView = view->Ref();
    return noErr;
}

StatusCode BTScrollViewSetScrollBarAutoHide(BTViewRef inView, Boolean inAutoHide) {
    auto* scroll = inView != nullptr ? dynamic_cast<ScrollView*>(V(inView)) : nullptr;
    if (scroll == nullptr)
        return paramErr;
    scroll->autoHide = inAutoHide != 0;
    scroll->Arrange();
    return noErr;
}

StatusCode BTScrollViewGoTo(BTViewRef inView, uint32_t inAction) {
    auto* scroll = inView != nullptr ? dynamic_cast<ScrollView*>(V(inView)) : nullptr;
    return scroll != nullptr ? scroll->GoTo(inAction) : paramErr;
}

} // extern "C"
