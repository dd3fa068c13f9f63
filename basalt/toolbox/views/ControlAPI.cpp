// The C calls on a control's state: value and range, title, enabled, active and hilite state,
// control data by tag and properties by creator and tag.

#include "basalt/toolbox/views/UnicodeText.h"
#include "basalt/toolbox/windows/Window.h"

#include <algorithm>

using namespace basalt::toolbox;

namespace {

View* V(ControlRef ref) {
    return View::From(ref);
}

StatusCode SendData(View& view, EventKind kind, ControlPartCode part, ResType tag, size_t size,
                    const void* data, size_t* outSize) {
    // Custom view classes answer "cntl" 103/104 themselves; the rest is the view's own store.
    if (!view.classChain.empty()) {
        EventHolder event(kEventClassControl, kind);
        SetParam(event.get(), kEventParamControlPart, typeControlPartCode, part);
        SetParam(event.get(), kEventParamControlDataTag, typeEnumeration, tag);
        SetParam(event.get(), kEventParamControlDataBuffer, typeVoidPtr, data);
        auto bufferSize = int32_t(size);
        SetParam(event.get(), kEventParamControlDataBufferSize, typeSInt32, bufferSize);
        StatusCode status = SendEventToEventTargetWithOptions(event.get(), view.Target(),
                                                              kEventTargetDontPropagate);
        if (status != eventNotHandledErr) {
            if (status == noErr && outSize != nullptr &&
                GetParam(event.get(), kEventParamControlDataBufferSize, typeSInt32, &bufferSize))
                *outSize = size_t(bufferSize);
            return status;
        }
    }
    if (kind == kEventControlSetData)
        return view.SetData(part, tag, size, data);
    return view.GetData(part, tag, size, const_cast<void*>(data), outSize);
}

} // namespace

extern "C" {

int32_t BTViewGetValue(BTViewRef inView) {
    return inView != nullptr ? V(inView)->Value() : 0;
}

StatusCode BTViewSetValue(BTViewRef inView, int32_t inValue) {
    if (inView == nullptr)
        return paramErr;
    V(inView)->SetValue(inValue);
    return noErr;
}

int32_t BTViewGetMinimum(BTViewRef inView) {
    return inView != nullptr ? V(inView)->Minimum() : 0;
}

StatusCode BTViewSetMinimum(BTViewRef inView, int32_t inMinimum) {
    if (inView == nullptr)
        return paramErr;
    V(inView)->SetMinimum(inMinimum);
    return noErr;
}

int32_t BTViewGetMaximum(BTViewRef inView) {
    return inView != nullptr ? V(inView)->Maximum() : 0;
}

StatusCode BTViewSetMaximum(BTViewRef inView, int32_t inMaximum) {
    if (inView == nullptr)
        return paramErr;
    V(inView)->SetMaximum(inMaximum);
    return noErr;
}

BCStringRef BTViewCopyText(BTViewRef inView) {
    return inView != nullptr ? MakeBCString(V(inView)->Text()) : nullptr;
}

StatusCode BTViewSetText(BTViewRef inView, BCStringRef inText) {
    if (inView == nullptr)
        return paramErr;
    V(inView)->SetText(FromBCString(inText));
    return noErr;
}

void ShowControl(ControlRef control) {
    BTViewSetVisible(control, true);
}
void HideControl(ControlRef control) {
    BTViewSetVisible(control, false);
}
Boolean IsControlVisible(ControlRef control) {
    return BTViewIsVisible(control);
}

StatusCode EnableControl(ControlRef control) {
    if (control == nullptr)
        return paramErr;
    V(control)->SetEnabled(true);
    return noErr;
}

StatusCode DisableControl(ControlRef control) {
    if (control == nullptr)
        return paramErr;
    V(control)->SetEnabled(false);
    if (Window* window = V(control)->OwnerWindow();
        window != nullptr && window->Focus() == V(control))
        window->SetFocus(nullptr, kControlFocusNoPart);
    return noErr;
}

Boolean IsControlEnabled(ControlRef control) {
    return control != nullptr && V(control)->IsEnabledInTree();
}

StatusCode ActivateControl(ControlRef control) {
    if (control == nullptr)
        return paramErr;
    V(control)->SetActive(true);
    return noErr;
}

StatusCode DeactivateControl(ControlRef control) {
    if (control == nullptr)
        return paramErr;
    V(control)->SetActive(false);
    return noErr;
}

Boolean IsControlActive(ControlRef control) {
    return control != nullptr && V(control)->IsActive();
}

void HiliteControl(ControlRef control, ControlPartCode hiliteState) {
    if (control == nullptr)
        return;
    // 255 is the inactive state, so any other value leaves it.
    V(control)->SetActive(hiliteState != kControlInactivePart);
    if (hiliteState != kControlInactivePart)
        V(control)->SetHilite(hiliteState);
}

ControlPartCode GetControlHilite(ControlRef control) {
    if (control == nullptr)
        return kControlNoPart;
    return V(control)->IsDeactivated() ? ControlPartCode(kControlInactivePart)
                                       : V(control)->Hilite();
}

Boolean IsControlHilited(ControlRef control) {
    return control != nullptr && V(control)->Hilite() != kControlNoPart;
}

Rect* GetControlBounds(ControlRef control, Rect* bounds) {
    if (control != nullptr && bounds != nullptr)
        BGRectToRect(V(control)->FrameInWindow(), bounds);
    return bounds;
}

void SetControlBounds(ControlRef control, const Rect* bounds) {
    if (control == nullptr || bounds == nullptr)
        return;
    BGRect wanted = BGRectFromRect(bounds);
    if (View* parent = V(control)->Superview())
        wanted.origin = parent->FromWindow(wanted.origin);
    V(control)->SetFrame(wanted);
}

int16_t GetControlValue(ControlRef control) {
    return int16_t(BTViewGetValue(control));
}
void SetControlValue(ControlRef control, int16_t value) {
    BTViewSetValue(control, value);
}
int32_t GetControl32BitValue(ControlRef control) {
    return BTViewGetValue(control);
}
void SetControl32BitValue(ControlRef control, int32_t value) {
    BTViewSetValue(control, value);
}
void SetControlMinimum(ControlRef control, int16_t value) {
    BTViewSetMinimum(control, value);
}
void SetControlMaximum(ControlRef control, int16_t value) {
    BTViewSetMaximum(control, value);
}
int16_t GetControlMaximum(ControlRef control) {
    return int16_t(BTViewGetMaximum(control));
}

StatusCode SetControlTitleWithBCString(ControlRef control, BCStringRef title) {
    return BTViewSetText(control, title);
}

StatusCode CopyControlTitleAsBCString(ControlRef control, BCStringRef* outTitle) {
    if (control == nullptr || outTitle == nullptr)
        return paramErr;
    *outTitle = BTViewCopyText(control);
    return noErr;
}

StatusCode SetControlCommandID(ControlRef inControl, uint32_t inCommandID) {
    if (inControl == nullptr)
        return paramErr;
    V(inControl)->command = inCommandID;
    return noErr;
}

StatusCode GetControlCommandID(ControlRef inControl, uint32_t* outCommandID) {
    if (inControl == nullptr || outCommandID == nullptr)
        return paramErr;
    *outCommandID = V(inControl)->command;
    return noErr;
}

void SetControlReference(ControlRef control, long data) {
    if (control != nullptr)
        V(control)->reference = data;
}

long GetControlReference(ControlRef control) {
    return control != nullptr ? V(control)->reference : 0;
}

void DrawOneControl(ControlRef control) {
    BTViewRender(control);
}
void Draw1Control(ControlRef control) {
    BTViewRender(control);
}
void DrawControlInCurrentPort(ControlRef control) {
    BTViewRender(control);
}

StatusCode SetControlData(ControlRef inControl, ControlPartCode inPart, ResType inTagName,
                          size_t inSize, const void* inData) {
    if (inControl == nullptr)
        return paramErr;
    return SendData(*V(inControl), kEventControlSetData, inPart, inTagName, inSize, inData,
                    nullptr);
}

StatusCode GetControlData(ControlRef inControl, ControlPartCode inPart, ResType inTagName,
                          size_t inBufferSize, void* inBuffer, size_t* outActualSize) {
    if (inControl == nullptr)
        return paramErr;
    return SendData(*V(inControl), kEventControlGetData, inPart, inTagName, inBufferSize, inBuffer,
                    outActualSize);
}

StatusCode GetControlDataSize(ControlRef inControl, ControlPartCode inPart, ResType inTagName,
                              size_t* outMaxSize) {
    return GetControlData(inControl, inPart, inTagName, 0, nullptr, outMaxSize);
}

StatusCode SetControlProperty(ControlRef control, PropertyCreator creator, PropertyTag tag,
                              size_t size, const void* buffer) {
    if (control == nullptr || (buffer == nullptr && size != 0))
        return paramErr;
    auto* bytes = static_cast<const uint8_t*>(buffer);
    V(control)->properties[{creator, tag}].assign(bytes, bytes + size);
    return noErr;
}

StatusCode GetControlProperty(ControlRef control, PropertyCreator creator, PropertyTag tag,
                              size_t bufferSize, size_t* actualSize, void* buffer) {
    if (control == nullptr)
        return paramErr;
    auto& properties = V(control)->properties;
    auto it = properties.find({creator, tag});
    if (it == properties.end())
        return errDataNotSupported;
    if (actualSize != nullptr)
        *actualSize = it->second.size();
    if (buffer != nullptr)
        std::copy_n(it->second.begin(), std::min(bufferSize, it->second.size()),
                    static_cast<uint8_t*>(buffer));
    return noErr;
}

StatusCode RemoveControlProperty(ControlRef control, PropertyCreator creator, PropertyTag tag) {
    if (control == nullptr)
        return paramErr;
    return V(control)->properties.erase({creator, tag}) != 0 ? StatusCode(noErr)
                                                             : StatusCode(errDataNotSupported);
}

} // extern "C"
