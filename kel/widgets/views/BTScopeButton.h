#pragma once

// The pill-shaped text button of the bar above search results, with which the user picks where
// a search looks. It is a two-state control by value; its dialog keeps the buttons of a bar
// exclusive. Idle it shows plain text; pressed, selected or under the mouse it shows a
// three-piece picture behind the text.

#include "kel/widgets/views/BundlePicture.h"
#include "kel/widgets/views/TView.h"

enum ScopeButtonState { kScopeIdle = 0, kScopePressed = 1, kScopeHovered = 2, kScopeSelected = 3 };

class BTScopeButton : public TView {
public:
    static BCStringRef ClassID();

    explicit BTScopeButton(ControlRef control);
    ~BTScopeButton() override;

    uint64_t GetKind() override;
    uint32_t GetBehaviors() override { return TView::GetBehaviors() | 0x800; }
    StatusCode Initialize(TBasaltEvent& event) override;
    void Draw(RgnHandle limit, BGContextRef context) override;
    StatusCode GetRegion(short part, RgnHandle region) override;
    short HitTest(const BGPoint& point) override;
    StatusCode GetOptimalSizeSelf(BGSize* size, float* baseline) override;

    ScopeButtonState State() const;
    // The pictures of a state; the idle state gives those of the selected one, for their sizes.
    static void GetButtonImages(ScopeButtonState state, BundlePicture* left, BundlePicture* middle,
                                BundlePicture* right);

private:
    static StatusCode EventHandler(EventHandlerCallRef call, EventRef event, void* data);
    StatusCode HoverChanged(EventKind kind);

    BTViewTrackingAreaRef trackingArea = nullptr;
    bool hovering = false;
    EventHandlerRef hoverHandler = nullptr;
};

StatusCode _BTScopeButtonRegisterClass();
