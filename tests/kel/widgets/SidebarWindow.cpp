#include "SidebarWindow.h"

#include "kel/widgets/SidebarEvents.h"
#include "tests/kel/nodes/KelNodeTesting.h"

#include <thread>

namespace fs = std::filesystem;

namespace keltest {

using basalt::headless::HeadlessDriver;

std::string NameOf(const TKelNode& node) {
    if (node.IsEmpty())
        return "<none>";
    std::string utf8;
    for (char16_t c : kelnodetest::Property(node, "dnam"))
        utf8 += c < 0x80 ? char(c) : '?';
    return utf8;
}

std::string ToText(BCStringRef string) {
    if (string == nullptr)
        return "";
    char buffer[1024] = {};
    BCStringGetCString(string, buffer, sizeof buffer, kBCStringEncodingUTF8);
    return buffer;
}

void SidebarWindow::SetUp() {
    ASSERT_EQ(TKelNode::InitializeCatalog(), noErr);
    ASSERT_EQ(_BTSidebarRegisterClass(), noErr);
    home = ScratchHome();
    for (const char* folder : {"Desktop", "Documents", "Downloads"})
        fs::create_directories(home / folder);
    WriteFile(home / ".config/user-dirs.dirs",
              "XDG_DESKTOP_DIR=\"$HOME/Desktop\"\nXDG_DOCUMENTS_DIR=\"$HOME/Documents\"\n"
              "XDG_DOWNLOAD_DIR=\"$HOME/Downloads\"\n");
    fs::remove(home / ".config/gtk-3.0/bookmarks");
    AddBookmark(MakeScratchFolder("projects"), "Projects");
    const Rect content{80, 80, 480, 380};
    ASSERT_EQ(CreateNewWindow(kDocumentWindowClass, 0, &content, &window), noErr);
    ShowWindow(window);
}

void SidebarWindow::TearDown() {
    if (window != nullptr)
        DisposeWindow(window);
    HeadlessDriver::RunUntilIdle();
    fs::remove(home / ".config/gtk-3.0/bookmarks");
    fs::remove(home / ".config/user-dirs.dirs");
}

void SidebarWindow::MakeSidebar(const BGRect& frame) {
    BTObjectRef object = nullptr;
    ASSERT_EQ(BTObjectCreate(BTSidebar::ClassID(), nullptr, &object), noErr);
    view = reinterpret_cast<ControlRef>(object);
    sidebar = static_cast<BTSidebar*>(BTObjectDynamicCast(object, BTSidebar::ClassID()));
    ASSERT_NE(sidebar, nullptr);
    items = sidebar->ItemsView();
    ASSERT_NE(items, nullptr);
    const EventTypeSpec dialogSide[] = {{kEventClassSidebar, kEventSidebarItemChosen},
                                        {kEventClassSidebar, kEventSidebarCopyClientRoot}};
    InstallEventHandler(GetControlEventTarget(view), DialogSide, 2, dialogSide, this, nullptr);
    ControlRef root = nullptr;
    GetRootControl(window, &root);
    BTViewAddSubview(root, view);
    BTViewSetFrame(view, &frame);
    HeadlessDriver::RunUntilIdle();
}

StatusCode SidebarWindow::DialogSide(EventHandlerCallRef, EventRef event, void* data) {
    auto* self = static_cast<SidebarWindow*>(data);
    if (GetEventKind(event) == kEventSidebarItemChosen) {
        TKelNode* node = nullptr;
        GetEventParameter(event, kEventParamSidebarNode, typeSidebarNode, nullptr, sizeof node,
                          nullptr, &node);
        uint32_t modifiers = 0;
        GetEventParameter(event, kEventParamKeyModifiers, typeUInt32, nullptr, sizeof modifiers,
                          nullptr, &modifiers);
        self->lastChosen = node != nullptr ? *node : TKelNode();
        self->lastModifiers = modifiers;
        self->told.push_back("chosen:" + NameOf(self->lastChosen));
        return noErr;
    }
    self->told.push_back("asked");
    if (self->location.IsEmpty())
        return eventNotHandledErr;
    OpaqueNodeRef* answer = CopyNodeRef(self->location.PeekNodeRef());
    return SetEventParameter(event, kEventParamSidebarNodeRef, typeSidebarNodeRef, sizeof answer,
                             &answer);
}

std::vector<std::string> SidebarWindow::Names(int first, int end) {
    std::vector<std::string> names;
    for (int index = first; index < end; ++index)
        names.push_back(ToText(sidebar->GetItem(index)->name.AsBCStringRef()));
    return names;
}

std::vector<std::string> SidebarWindow::TopNames() {
    return Names(0, sidebar->CountTopItems());
}

std::vector<std::string> SidebarWindow::BottomNames() {
    return Names(sidebar->CountTopItems(), sidebar->CountItems());
}

int SidebarWindow::RowNamed(const std::string& name) {
    std::vector<std::string> all = Names(0, sidebar->CountItems());
    for (size_t i = 0; i < all.size(); ++i)
        if (all[i] == name)
            return int(i) + 1;
    return 0;
}

BGPoint SidebarWindow::RowPoint(int row) {
    BGRect rect{};
    items->GetItemBounds(row, &rect);
    BTViewConvertRect(&rect, items->GetViewRef(), nullptr);
    return {BGRectGetMidX(rect), BGRectGetMidY(rect)};
}

void SidebarWindow::AddBookmark(const fs::path& folder, const std::string& label) {
    std::string lines = ReadFile(home / ".config/gtk-3.0/bookmarks");
    WriteFile(home / ".config/gtk-3.0/bookmarks",
              lines + "file://" + folder.string() + " " + label + "\n");
}

void SidebarWindow::ReportLocation(const TKelNode& node) {
    EventRef event = nullptr;
    ASSERT_EQ(
        CreateEvent(nullptr, kEventClassSidebar, kEventSidebarClientRootChanged, 0, 0, &event),
        noErr);
    const TKelNode* pointer = &node;
    SetEventParameter(event, kEventParamSidebarNode, typeSidebarNode, sizeof pointer, &pointer);
    EXPECT_EQ(SendEventToEventTarget(event, GetControlEventTarget(view)), noErr);
    ReleaseEvent(event);
}

bool SidebarWindow::RunUntil(const std::function<bool()>& condition,
                             std::chrono::milliseconds deadline) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        HeadlessDriver::RunFor(0.01);
    }
    return true;
}

} // namespace keltest
