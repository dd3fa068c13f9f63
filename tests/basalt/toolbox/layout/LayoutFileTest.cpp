// Bad layout files fail with a status and a message that names the file, the window and the
// problem.

#include "basalt/toolbox/events/Event.h"
#include "basalt/toolbox/views/UnicodeText.h"
#include "tests/support/TestEnvironment.h"

#include <basalt/BasaltToolbox.h>
#include <gtest/gtest.h>

using namespace basalt::toolbox;

namespace {

std::string LastError() {
    StringHolder message(BTCopyLastLayoutError());
    return ToUTF8(FromBCString(message.get()));
}

StatusCode Build(const std::string& json, const std::u16string& name, WindowRef* window) {
    auto folder = keltest::MakeScratchFolder("layout");
    keltest::WriteFile(folder / "Broken.json", json);
    LayoutRef layout = nullptr;
    StatusCode status = CreateLayoutReferenceWithPath((folder / "Broken.json").c_str(), &layout);
    if (status != noErr)
        return status;
    StringHolder windowName(MakeBCString(name));
    status = CreateWindowFromLayout(layout, windowName.get(), window);
    DisposeLayoutReference(layout);
    return status;
}

} // namespace

TEST(LayoutFile, MissingAndMalformedFilesFailClearly) {
    LayoutRef layout = nullptr;
    EXPECT_EQ(CreateLayoutReferenceWithPath("/nonexistent/Dialogs.json", &layout), errLayoutFile);
    EXPECT_NE(LastError().find("/nonexistent/Dialogs.json: the layout file cannot be read"),
              std::string::npos);
    WindowRef window = nullptr;
    EXPECT_EQ(Build("{ \"windows\": { ", u"A", &window), errLayoutFile);
    EXPECT_NE(LastError().find("not valid JSON"), std::string::npos);
    EXPECT_EQ(Build("[1, 2]", u"A", &window), errLayoutFile);
    EXPECT_NE(LastError().find("no \"windows\""), std::string::npos);
}

TEST(LayoutFile, ProblemsInAWindowNameTheWindowAndTheControl) {
    WindowRef window = nullptr;
    EXPECT_EQ(Build(R"({"windows": {"A": {"frame": [0, 0, 10, 10]}}})", u"B", &window),
              errNoSuchLayoutWindow);
    EXPECT_EQ(LastError(), "Broken.json: window \"B\": no such window in the file");

    const char* unknownKind = R"({"windows": {"Main": {"frame": [0, 0, 100, 100], "controls": [
        {"kind": "push-button", "frame": [0, 0, 10, 10]},
        {"kind": "fancy-dial", "id": ["kels", 7], "frame": [0, 0, 10, 10]}]}}})";
    EXPECT_EQ(Build(unknownKind, u"Main", &window), errUnknownControl);
    EXPECT_EQ(LastError(), "Broken.json: window \"Main\": control 2 [\"kels\",7]: unknown control "
                           "kind \"fancy-dial\"");

    const char* badFields[] = {
        R"({"windows": {"Main": {"class": 5, "frame": [0, 0, 1, 1]}}})",
        R"({"windows": {"Main": {"class": "round", "frame": [0, 0, 1, 1]}}})",
        R"({"windows": {"Main": {"frame": [0, 0, 1]}}})",
        R"({"windows": {"Main": {"frame": [0, 0, 9, 9], "controls": [{"kind": "check-box",
            "frame": [0, 0, 1, 1], "value": "on"}]}}})",
        R"({"windows": {"Main": {"frame": [0, 0, 9, 9], "controls": [{"kind": "group-box",
            "frame": [0, 0, 9, 9], "controls": [{"kind": "push-button", "frame": [0, 0, 1, 1],
            "bindings": {"left": "middle"}}]}]}}})",
    };
    for (const char* json : badFields) {
        EXPECT_EQ(Build(json, u"Main", &window), errLayoutFile) << json;
        EXPECT_EQ(LastError().rfind("Broken.json: window \"Main\": ", 0), 0u) << LastError();
    }
}

TEST(LayoutFile, TheBundlesWindowsAllBuild) {
    LayoutRef layout = nullptr;
    std::string path =
        std::string(KEL_BUILD_BUNDLE_DIR) + "/KelServices.bundle/Resources/Dialogs.json";
    ASSERT_EQ(CreateLayoutReferenceWithPath(path.c_str(), &layout), noErr);
    for (const char16_t* name : {u"Go To", u"New Folder", u"Toolbox Sampler"}) {
        StringHolder windowName(MakeBCString(name));
        WindowRef window = nullptr;
        EXPECT_EQ(CreateWindowFromLayout(layout, windowName.get(), &window), noErr) << LastError();
        DisposeWindow(window);
    }
    DisposeLayoutReference(layout);
}

TEST(LayoutFile, TheLibrarysBundleIsFoundByIdentifier) {
    StringHolder identifier(MakeBCString(u"com.velmo.KelServices"));
    BCBundleRef bundle = BCBundleGetBundleWithIdentifier(identifier.get());
    ASSERT_NE(bundle, nullptr);
    StringHolder dialogs(MakeBCString(u"Dialogs"));
    LayoutRef layout = nullptr;
    ASSERT_EQ(CreateLayoutReferenceWithBCBundle(bundle, dialogs.get(), &layout), noErr);
    DisposeLayoutReference(layout);
    StringHolder missing(MakeBCString(u"Nope"));
    EXPECT_EQ(CreateLayoutReferenceWithBCBundle(bundle, missing.get(), &layout), errLayoutFile);
    EXPECT_EQ(LastError(), "Nope.json: the bundle has no such layout file");
}

TEST(LayoutFile, OutlandishNumbersAreKeptInBounds) {
    WindowRef window = nullptr;
    const char* json = R"({"windows": {"Main": {"frame": [0, 0, 100, 40], "controls": [
        {"kind": "segmented", "id": ["kels", 1], "frame": [0, 0, 90, 20], "segments": -1},
        {"kind": "push-button", "frame": [99999, -99999, 1e9, 20]}]}}})";
    ASSERT_EQ(Build(json, u"Main", &window), noErr) << LastError();
    ControlID id{FourCC("kels"), 1};
    ControlRef segmented = nullptr;
    GetControlByID(window, &id, &segmented);
    uint32_t count = 0;
    GetControlData(segmented, 0, kControlSegmentCountTag, sizeof count, &count, nullptr);
    EXPECT_EQ(count, 64u);
    ShowWindow(window);
    EXPECT_EQ(BTWindowFlush(window), noErr);
    DisposeWindow(window);
}

namespace {

StatusCode ConstructTag(EventHandlerCallRef, EventRef event, void*) {
    static int instance = 0;
    if (GetEventKind(event) != kEventObjectConstruct)
        return eventNotHandledErr;
    void* stored = &instance;
    return SetEventParameter(event, kEventParamObject, typeVoidPtr, sizeof stored, &stored);
}

} // namespace

TEST(LayoutFile, ObjectsAreViewsOfRegisteredClasses) {
    StringHolder classID(MakeBCString(u"com.example.LayoutTag"));
    StringHolder base(MakeBCString(u"" kBTViewClassID));
    const EventTypeSpec construct = {kEventClassObject, kEventObjectConstruct};
    ASSERT_EQ(BTObjectRegisterSubclass(classID.get(), base.get(), 0, ConstructTag, 1, &construct,
                                       nullptr, nullptr),
              noErr);
    WindowRef window = nullptr;
    ASSERT_EQ(Build(R"({"windows": {"Main": {"frame": [0, 0, 200, 100], "controls": [
        {"kind": "object", "class": "com.example.LayoutTag", "id": ["kels", 4],
         "frame": [10, 10, 50, 20]}]}}})",
                    u"Main", &window),
              noErr);
    ControlRef tag = nullptr;
    const ControlID id = {0x6B656C73 /* "kels" */, 4};
    ASSERT_EQ(GetControlByID(window, &id, &tag), noErr);
    EXPECT_NE(BTObjectDynamicCast(reinterpret_cast<BTObjectRef>(tag), classID.get()), nullptr);
    BGRect frame{};
    BTViewGetFrame(tag, &frame);
    EXPECT_EQ(frame.size.width, 50);
    DisposeWindow(window);

    EXPECT_EQ(Build(R"({"windows": {"Main": {"frame": [0, 0, 9, 9], "controls": [
        {"kind": "object", "class": "com.example.Unheard", "frame": [0, 0, 1, 1]}]}}})",
                    u"Main", &window),
              eventClassInvalidErr);
    EXPECT_NE(LastError().find("no view of class \"com.example.Unheard\""), std::string::npos);
    EXPECT_EQ(Build(R"({"windows": {"Main": {"frame": [0, 0, 9, 9], "controls": [
        {"kind": "object", "frame": [0, 0, 1, 1]}]}}})",
                    u"Main", &window),
              errLayoutFile);
}
