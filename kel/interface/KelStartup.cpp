#include "kel/interface/KelStartup.h"

#include "kel/foundation/KelBundle.h"
#include "kel/nodes/TKelNode.h"
#include "kel/widgets/BTSidebar.h"
#include "kel/widgets/views/BTScopeButton.h"

bool gKelInitialized = false;
TStringRef* kSlashStr = nullptr;
TStringRef* kTildeStr = nullptr;
TStringRef* kHyphenStr = nullptr;
TStringRef* kColonStr = nullptr;
TStringRef* gCommandKeys = nullptr;

namespace {

// Made once and never freed, like the other process-wide strings.
TStringRef* MakeCharacterString(UniChar character) {
    return new TStringRef(TStringRef::Create(&character, 1));
}

} // namespace

void _InitializeKel() {
    gKelInitialized = true;
    kSlashStr = MakeCharacterString(u'/');
    kTildeStr = MakeCharacterString(u'~');
    kHyphenStr = MakeCharacterString(u'-');
    kColonStr = MakeCharacterString(u':');
    if (KelBundle::KelGetBundle() != nullptr) {
        gCommandKeys = new TStringRef(KelBundle::GetStringResource(BCSTR("Command Keys")));
        _BTSidebarRegisterClass();
        _BTScopeButtonRegisterClass();
    }
    TKelNode::InitializeCatalog();
}
