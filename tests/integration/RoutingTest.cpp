// Routing to the second implementation of the panels, with a real loadable bundle. Each case runs
// in a fresh child process, since the routing decision is made once per process.

#include "tests/support/TestEnvironment.h"

#include <basalt/files/BEDesc.h>
#include <basalt/files/BFCatalogInfo.h>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <kel/KelServices.h>
#include <string>
#include <thread>
#include <unistd.h>

namespace {

int entryPointLookups = 0;

} // namespace

// Counts how often the library looks up an entry point of a bundle, then does the lookup.
extern "C" void* BCBundleGetFunctionPointerForName(BCBundleRef bundle, BCStringRef name) {
    using Lookup = void* (*)(BCBundleRef, BCStringRef);
    static auto lookup =
        reinterpret_cast<Lookup>(dlsym(RTLD_NEXT, "BCBundleGetFunctionPointerForName"));
    ++entryPointLookups;
    return lookup(bundle, name);
}

namespace {

constexpr uint32_t kStubUserAction = 77;
constexpr StatusCode kStubStatus = 4242;

// Children start from the same parent state, so folder names are made unique per process.
std::string ChildUnique(const char* hint) {
    return std::string(hint) + "-" + std::to_string(getpid());
}

// A folder holding a TerraceKit bundle whose code is the given module.
std::filesystem::path MakeTerraceKitFolder(const char* module) {
    const auto folder = keltest::MakeScratchFolder(ChildUnique("terracekit"));
    const auto bundle = folder / "TerraceKit.bundle";
    keltest::WriteFile(bundle / "Info.json",
                       R"({"identifier": "com.velmo.TerraceKit", "executable": "TerraceKit.so"})");
    std::filesystem::copy_file(module, bundle / "TerraceKit.so");
    return folder;
}

void UseBundleFolder(const std::filesystem::path& folder) {
    const std::string path = folder.string() + ":" + KEL_BUILD_BUNDLE_DIR;
    setenv("KEL_BUNDLE_PATH", path.c_str(), 1);
}

// Makes this process an application with an identifier, so that it has a preference domain.
void BecomeApplication(const char* identifier) {
    const auto folder = keltest::MakeScratchFolder(ChildUnique("application"));
    keltest::WriteFile(folder / "Info.json",
                       std::string(R"({"identifier": ")") + identifier + R"("})");
    setenv("KEL_MAIN_BUNDLE", folder.c_str(), 1);
}

bool IsForwarded() {
    KelDialogRef dialog = nullptr;
    KelCreateGetFileDialog(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &dialog);
    const bool forwarded = KelDialogGetUserAction(dialog) == kStubUserAction;
    KelDialogDispose(dialog);
    return forwarded;
}

// Ends the child: 0 when the check held, else 1 with the reason on standard error.
[[noreturn]] void Finish(bool held, const char* reason) {
    if (!held) {
        std::cerr << reason << std::endl;
    }
    std::_Exit(held ? 0 : 1);
}

#define EXPECT_IN_CHILD(scenario) EXPECT_EXIT(scenario, ::testing::ExitedWithCode(0), "")

void ForwardEveryRoutedCall() {
    BCRunLoopGetMain();
    UseBundleFolder(MakeTerraceKitFolder(TERRACEKIT_STUB));
    KelDialogRef dialog = nullptr;
    bool held = KelCreateChooseFolderDialog(nullptr, nullptr, nullptr, nullptr, &dialog) == noErr &&
                KelDialogGetUserAction(dialog) == kStubUserAction &&
                KelDialogRun(dialog) == kStubStatus &&
                KelDialogSetFilterTypeIdentifiers(dialog, nullptr) == kStubStatus;
    // Replies are always freed here, and the defaults are always this library's.
    KelReplyRecord reply{};
    KelDialogCreationOptions options;
    held = held && KelDisposeReply(&reply) == noErr &&
           KelGetDefaultDialogCreationOptions(&options) == noErr;
    // A routed ask call skips the local checks and stops at the other side's failing defaults.
    uint32_t answer = 99;
    held = held && KelAskSaveChanges(nullptr, 1, &answer, nullptr, nullptr) == kStubStatus &&
           answer == 99;
    const int lookupsOfFirstCall = 24;
    Finish(held && entryPointLookups == lookupsOfFirstCall,
           "calls were not forwarded, or entry points were looked up more than once");
}

// The file spec of a reply's first item, or a zeroed one.
BFSpec FirstSpec(const KelReplyRecord& reply, DescType* type) {
    BFSpec spec{};
    Size size = 0;
    const BEDescList selection = reply.selection; // the record's own sits unaligned
    BEGetNthPtr(&selection, 1, typeWildCard, nullptr, type, &spec, sizeof spec, &size);
    return spec;
}

// A blocking browse call goes the routed road: options converted, the dialog made through the
// create call, placed, run, its reply read (and for the older calls turned back into a file spec
// naming the chosen name inside the chosen folder), then disposed.
void RouteBlockingBrowseCalls() {
    BCRunLoopGetMain();
    const auto folder = keltest::MakeScratchFolder(ChildUnique("chosen"));
    const auto trace = folder.parent_path() / ChildUnique("trace");
    setenv("TERRACEKIT_STUB_FOLDER", folder.c_str(), 1);
    setenv("TERRACEKIT_STUB_TRACE", trace.c_str(), 1);
    UseBundleFolder(MakeTerraceKitFolder(TERRACEKIT_STUB));
    BFRef folderRef;
    BFCatalogInfo info{};
    BFPathMakeRef(reinterpret_cast<const uint8_t*>(folder.c_str()), &folderRef, nullptr);
    BFGetCatalogInfo(&folderRef, kBFCatInfoNodeID, &info, nullptr, nullptr, nullptr);

    BEDesc location;
    BEInitializeDesc(&location);
    KelReplyRecord reply{};
    bool held = KelChooseFolder(&location, &reply, nullptr, nullptr, nullptr, nullptr) == noErr;
    DescType type = 0;
    BFSpec spec = FirstSpec(reply, &type);
    held = held && type == typeFileSpec && spec.parID == int32_t(info.nodeID) &&
           std::string(reinterpret_cast<char*>(spec.name + 1), spec.name[0]) == "Letter.txt" &&
           reply.saveFileName == nullptr;
    KelDisposeReply(&reply);
    held = held && keltest::ReadFile(trace) ==
                       "defaults\n_TKKelCreateChooseFolderDialog\nset-location\nrun\nreply\n"
                       "dispose\n";
    // The newer reply of the open call stays as the other side gave it.
    held = held && KelGetFile(nullptr, &reply, nullptr, nullptr, nullptr, nullptr, nullptr,
                              nullptr) == noErr;
    FirstSpec(reply, &type);
    held = held && type == typeBFRef;
    KelDisposeReply(&reply);
    Finish(held, "a blocking browse call did not go the routed road as it should");
}

void ForwardWithPreferenceAbsent() {
    BCRunLoopGetMain();
    BecomeApplication("com.example.routing.absent");
    UseBundleFolder(MakeTerraceKitFolder(TERRACEKIT_STUB));
    Finish(IsForwarded(), "an absent preference did not allow routing");
}

void StayLocalWithPreferenceFalse() {
    BCRunLoopGetMain();
    BecomeApplication("com.example.routing.off");
    BCPreferencesSetAppValue(BCSTR("VelmoUseTerraceKelServices"), kBCBooleanFalse,
                             BCSTR("com.example.routing.off"));
    BCPreferencesAppSynchronize(BCSTR("com.example.routing.off"));
    UseBundleFolder(MakeTerraceKitFolder(TERRACEKIT_STUB));
    Finish(!IsForwarded() && entryPointLookups == 0, "routing went ahead against the preference");
}

void StayLocalWithIncompleteBundle() {
    BCRunLoopGetMain();
    UseBundleFolder(MakeTerraceKitFolder(TERRACEKIT_STUB_INCOMPLETE));
    const bool firstLocal = !IsForwarded();
    const int lookupsAfterFirst = entryPointLookups;
    const bool secondLocal = !IsForwarded();
    Finish(firstLocal && secondLocal && lookupsAfterFirst > 0 &&
               entryPointLookups > lookupsAfterFirst,
           "a bundle missing an entry point was used, or not looked at again");
}

void ForwardOnceBundleAppears() {
    BCRunLoopGetMain();
    const bool localWithoutBundle = !IsForwarded();
    UseBundleFolder(MakeTerraceKitFolder(TERRACEKIT_STUB));
    Finish(localWithoutBundle && IsForwarded(), "the bundle was not looked for again");
}

void StayLocalAfterCallFromOtherThread() {
    BCRunLoopGetMain();
    UseBundleFolder(MakeTerraceKitFolder(TERRACEKIT_STUB));
    std::thread([] { KelDialogGetUserAction(nullptr); }).join();
    Finish(!IsForwarded() && !IsForwarded() && entryPointLookups == 0,
           "routing survived a call from another thread");
}

void StayLocalWithFixDisabled() {
    BCRunLoopGetMain();
    setenv("KEL_DISABLED_FIXES", "5441085", 1);
    UseBundleFolder(MakeTerraceKitFolder(TERRACEKIT_STUB));
    Finish(!IsForwarded(), "routing went ahead although a required fix is off");
}

TEST(Routing, CallsGoToTheSecondImplementationWhenItIsThereAndNothingForbidsIt) {
    EXPECT_IN_CHILD(ForwardEveryRoutedCall());
}

TEST(Routing, BlockingBrowseCallsGoThroughTheCreateCallsAndConvertTheirReplies) {
    EXPECT_IN_CHILD(RouteBlockingBrowseCalls());
}

TEST(Routing, PreferenceAbsentAllowsRoutingAndFalseKeepsTheLibrarysOwnDialogs) {
    EXPECT_IN_CHILD(ForwardWithPreferenceAbsent());
    EXPECT_IN_CHILD(StayLocalWithPreferenceFalse());
}

TEST(Routing, MissingEntryPointKeepsCallsLocalAndIsLookedForAgainOnEachCall) {
    EXPECT_IN_CHILD(StayLocalWithIncompleteBundle());
}

TEST(Routing, MissingBundleIsLookedForAgainOnTheNextCall) {
    EXPECT_IN_CHILD(ForwardOnceBundleAppears());
}

TEST(Routing, FirstCallFromAnotherThreadEndsRoutingForGood) {
    EXPECT_IN_CHILD(StayLocalAfterCallFromOtherThread());
}

TEST(Routing, ProcessWithoutAFixOfItsCompatibilityStateStaysLocal) {
    EXPECT_IN_CHILD(StayLocalWithFixDisabled());
}

} // namespace
