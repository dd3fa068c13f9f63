// A view class of the library's own: the toolbox's events reach its virtual operations, its
// kind is answered as control data, and it goes with its view.

#include "kel/widgets/views/TView.h"

#include "basalt/backend/headless/HeadlessDriver.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;

namespace {

int gLiving = 0;

class TSwatch : public TView {
public:
    explicit TSwatch(ControlRef control) : TView(control) { ++gLiving; }
    ~TSwatch() override { --gLiving; }
    uint64_t GetKind() override { return ViewKind("kelt", "Swch"); }
    StatusCode Initialize(TBasaltEvent&) override {
        initialized = true;
        return noErr;
    }
    void ValueChanged() override { ++valueChanges; }
    static constexpr OSType Code(const char (&c)[5]) {
        return OSType(uint8_t(c[0])) << 24 | OSType(uint8_t(c[1])) << 16 |
               OSType(uint8_t(c[2])) << 8 | OSType(uint8_t(c[3]));
    }
    bool initialized = false;
    int valueChanges = 0;
};

BCStringRef SwatchClass() {
    return BCSTR("com.example.TSwatch");
}

} // namespace

TEST(TViewTest, EventsReachTheInstanceFromConstructionToDestruction) {
    static const StatusCode registered = TObject::RegisterSubclass(
        SwatchClass(), BCSTR(kBTViewClassID), TObject::ConstructAs<TSwatch>);
    ASSERT_EQ(registered, noErr);
    BTObjectRef object = nullptr;
    ASSERT_EQ(BTObjectCreate(SwatchClass(), nullptr, &object), noErr);
    auto control = reinterpret_cast<ControlRef>(object);
    auto* swatch = static_cast<TSwatch*>(BTObjectDynamicCast(object, SwatchClass()));
    ASSERT_NE(swatch, nullptr);
    EXPECT_TRUE(swatch->initialized);
    EXPECT_EQ(gLiving, 1);

    ControlKind kind{};
    ASSERT_EQ(GetControlData(control, 0, kControlKindTag, sizeof kind, &kind, nullptr), noErr);
    EXPECT_EQ(kind.signature, TSwatch::Code("kelt"));
    EXPECT_EQ(kind.kind, TSwatch::Code("Swch"));
    size_t size = 0;
    EXPECT_EQ(GetControlDataSize(control, 0, kControlKindTag, &size), noErr);
    EXPECT_EQ(size, sizeof kind);
    uint32_t small = 0;
    EXPECT_EQ(GetControlData(control, 0, kControlKindTag, sizeof small, &small, nullptr), -30591);

    Rect bounds = {100, 100, 200, 300};
    WindowRef window = nullptr;
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
    ControlRef root = nullptr;
    GetRootControl(window, &root);
    BTViewAddSubview(root, control);
    ShowWindow(window);
    HeadlessDriver::RunUntilIdle();
    BTViewSetValue(control, 1);
    EXPECT_EQ(swatch->valueChanges, 1);

    DisposeWindow(window);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(gLiving, 0);
}
