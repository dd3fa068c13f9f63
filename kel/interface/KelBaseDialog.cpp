#include "kel/interface/KelBaseDialog.h"

#include "kel/foundation/KelBundle.h"

#include <cmath>

namespace {

constexpr OSType kKelControlSignature = 0x6B656C73; // "kels"
constexpr WindowAttributes kDialogWindowAttributes = 0x800000;
constexpr WindowClass kMovableModalClass = 4;
constexpr WindowRegionCode kGlobalPortRegion = 40;
constexpr UniChar kEnter = 3;
constexpr UniChar kReturn = 13;
constexpr UniChar kEscape = 27;
constexpr UniChar kPeriod = 46;

bool EndsWith(BCStringRef string, BCStringRef suffix) {
    return string != nullptr && BCStringHasSuffix(string, suffix) != 0;
}

// Presses a dismiss button the way a click would.
void Click(ControlRef button) {
    BTViewSimulateClick(button, kControlButtonPart, 0, nullptr);
}

int16_t Rounded(BGFloat value) {
    return static_cast<int16_t>(std::lround(value));
}

} // namespace

bool KelBaseDialog::IsBTCommandAllowed(uint32_t) {
    return false;
}

bool KelBaseDialog::ExecuteBTCommand(uint32_t) {
    return false;
}

KelBaseDialog::~KelBaseDialog() {
    if (dialogRef != nullptr) {
        DisposeDialog(dialogRef);
    }
}

int32_t KelBaseDialog::ItemHit(int16_t, int16_t, uint32_t) {
    return 0;
}

StatusCode KelBaseDialog::InitDialog() {
    defaultControl = GetControlFromLayout(1);
    cancelControl = GetControlFromLayout(2);
    SetDialogTracksCursor(dialogRef, true);
    editMenu.Initialize(this);
    return noErr;
}

void KelBaseDialog::CacheControlRefs() {
    defaultControl = GetControlFromLayout(1);
    cancelControl = GetControlFromLayout(2);
}

void KelBaseDialog::SetUpViewLayouts() {}

bool KelBaseDialog::DefaultKeydown(EventRecord& event, int16_t& item) {
    if (event.what != keyDown && event.what != autoKey) {
        return false;
    }
    const auto character = static_cast<UniChar>(event.message & charCodeMask);
    ControlRef button = nullptr;
    int16_t hit = 0;
    if (character == kEnter || character == kReturn) {
        button = defaultControl;
        hit = 1;
    } else if (character == kEscape || (character == kPeriod && (event.modifiers & cmdKey) != 0)) {
        button = cancelControl;
        hit = 2;
    } else {
        return false;
    }
    // A hilited button is being pressed already: the key is taken and nothing more happens.
    if (button != nullptr && !IsControlHilited(button)) {
        Click(button);
        item = hit;
    }
    return true;
}

bool KelBaseDialog::DefaultKeydown(uint16_t character, int16_t& item) {
    if (character == kEnter || character == kReturn) {
        ControlRef focus = nullptr;
        if (GetKeyboardFocus(windowRef, &focus) != noErr || defaultControl == nullptr ||
            IsControlHilited(defaultControl)) {
            return false;
        }
        Click(defaultControl);
        item = 1;
        return true;
    }
    if (character == kEscape) {
        if (cancelControl == nullptr || IsControlHilited(cancelControl)) {
            return true;
        }
        Click(cancelControl);
        item = 2;
        return true;
    }
    return false;
}

void KelBaseDialog::DisableMenuBar() {
    if (menuBarDisableCount == 0) {
        modalState = _BeginAppModalState();
        InvalMenuBar();
    }
    ++menuBarDisableCount;
}

void KelBaseDialog::ReEnableMenuBar() {
    if (menuBarDisableCount == 0) {
        return;
    }
    if (--menuBarDisableCount == 0) {
        _EndAppModalState(modalState);
        InvalMenuBar();
    }
}

bool KelBaseDialog::HandleMenuChoice(int32_t choice) {
    return DoMenuChoice(static_cast<int16_t>(choice >> 16), static_cast<int16_t>(choice & 0xFFFF));
}

bool KelBaseDialog::DoMenuChoice(int16_t menu, int16_t item) {
    HiliteMenu(0);
    return editMenu.DoMenuChoice(menu, item);
}

void KelBaseDialog::AllocateDialogFromLayout(BCStringRef name) {
    LayoutRef layout = nullptr;
    if (CreateLayoutReferenceWithBCBundle(KelBundle::KelGetBundle(), BCSTR("Dialogs"), &layout) !=
        noErr) {
        return;
    }
    WindowRef window = nullptr;
    const StatusCode status = CreateWindowFromLayout(layout, name, &window);
    DisposeLayoutReference(layout);
    if (status != noErr || window == nullptr) {
        return;
    }
    ChangeWindowAttributes(window, kDialogWindowAttributes, 0);
    if (EndsWith(name, BCSTR("Movable Modal"))) {
        SetWindowClass(window, kMovableModalClass);
        BringToFront(window);
    }
    DialogRef dialog = nullptr;
    if (_CreatePrivateDialogRefAndBindToWindowRef(window, &dialog) != noErr || dialog == nullptr) {
        DisposeWindow(window);
        return;
    }
    SetDialogRef(dialog);
    CacheControlRefs();
    SetUpViewLayouts();
}

void KelBaseDialog::SetDialogRef(DialogRef dialog) {
    dialogRef = dialog;
    windowRef = dialog != nullptr ? GetDialogWindow(dialog) : nullptr;
    rootControl = nullptr;
    if (windowRef != nullptr) {
        GetRootControl(windowRef, &rootControl);
    }
}

Point KelBaseDialog::GetLocation() const {
    Rect bounds{0, 0, 0, 0};
    GetWindowBounds(windowRef, kGlobalPortRegion, &bounds);
    return Point{bounds.top, bounds.left};
}

void KelBaseDialog::GetBounds(TRect& bounds) const {
    Rect global{0, 0, 0, 0};
    GetWindowBounds(windowRef, kGlobalPortRegion, &global);
    bounds = global;
    bounds.OffsetTo(0, 0);
}

Rect KelBaseDialog::GetControlContentRelativeRect(ControlRef control) const {
    BGRect frame = BGRectZero;
    BTViewGetBounds(control, &frame);
    if (BTViewIsCompositingEnabled(windowRef)) {
        BTViewConvertRect(&frame, control, rootControl);
    }
    const int16_t left = Rounded(frame.origin.x);
    const int16_t top = Rounded(frame.origin.y);
    return Rect{top, left, Rounded(frame.origin.y + frame.size.height),
                Rounded(frame.origin.x + frame.size.width)};
}

void KelBaseDialog::SetControlContentRelativeRect(ControlRef control, const Rect& rect) const {
    BGRect frame = BGRectMake(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
    BTViewConvertRect(&frame, rootControl, BTViewGetSuperview(control));
    BTViewSetFrame(control, &frame);
}

ControlRef KelBaseDialog::GetItemControl(int16_t item) const {
    ControlRef control = nullptr;
    if (dialogRef == nullptr || GetDialogItemAsControl(dialogRef, item, &control) != noErr) {
        return nullptr;
    }
    return control;
}

ControlRef KelBaseDialog::GetControlFromLayout(int16_t id) const {
    const ControlID controlID{kKelControlSignature, id};
    ControlRef control = nullptr;
    if (windowRef == nullptr || GetControlByID(windowRef, &controlID, &control) != noErr) {
        return nullptr;
    }
    return control;
}

ControlRef KelBaseDialog::GetDefaultControl() const {
    ControlRef control = nullptr;
    if (windowRef == nullptr || GetWindowDefaultButton(windowRef, &control) != noErr) {
        return nullptr;
    }
    return control;
}
