#include "basalt/toolbox/layout/LayoutFile.h"

#include "basalt/toolbox/controls/Displays.h"
#include "basalt/toolbox/controls/EditText.h"
#include "basalt/toolbox/controls/Splitter.h"
#include "basalt/toolbox/views/UnicodeText.h"
#include "basalt/toolbox/views/ViewFactory.h"
#include "basalt/toolbox/windows/Window.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace basalt::toolbox::layout {
namespace {

using nlohmann::json;

std::string& LastError() {
    static auto* message = new std::string;
    return *message;
}

// A failure that carries its message up to the call that reports it.
struct Problem {
    StatusCode status;
    std::string message;
};

struct Context {
    const OpaqueLayoutRef& layout;
    std::string window;
    Problem Fail(StatusCode status, const std::string& what) const {
        return {status, std::filesystem::path(layout.path).filename().string() + ": window \"" +
                            window + "\": " + what};
    }
};

const std::pair<const char*, WindowClass> kClasses[] = {
    {"alert", kAlertWindowClass},       {"movable-alert", kMovableAlertWindowClass},
    {"modal", kModalWindowClass},       {"movable-modal", kMovableModalWindowClass},
    {"floating", kFloatingWindowClass}, {"document", kDocumentWindowClass},
    {"utility", kUtilityWindowClass},   {"sheet", kSheetWindowClass},
    {"plain", kPlainWindowClass},
};

const std::pair<const char*, WindowAttributes> kAttributes[] = {
    {"close-box", kWindowCloseBoxAttribute},
    {"collapse-box", kWindowCollapseBoxAttribute},
    {"resizable", kWindowResizableAttribute},
    {"live-resize", kWindowLiveResizeAttribute},
    {"standard-handler", kWindowStandardHandlerAttribute},
    {"compositing", kWindowCompositingAttribute},
};

const std::pair<const char*, uint32_t> kFeatures[] = {
    {"embedding", kBTControlSupportsEmbedding},
    {"focus", kBTControlSupportsFocus},
    {"idle", 1u << 5},
    {"data", 1u << 7},
};

std::optional<Problem> ReadRect(const Context& context, const json& value, const std::string& what,
                                BGRect* out) {
    if (!value.is_array() || value.size() != 4 ||
        !std::all_of(value.begin(), value.end(), [](const json& n) { return n.is_number(); }))
        return context.Fail(errLayoutFile, what + ": \"frame\" must be [x, y, width, height]");
    *out = BGRectMake(value[0].get<double>(), value[1].get<double>(), value[2].get<double>(),
                      value[3].get<double>());
    if (out->size.width < 0 || out->size.height < 0)
        return context.Fail(errLayoutFile, what + ": \"frame\" has a negative size");
    return std::nullopt;
}

FourCharCode CodeOf(const std::string& text) {
    std::string padded = (text + "    ").substr(0, 4);
    return FourCC({padded[0], padded[1], padded[2], padded[3], 0});
}

std::optional<Problem> ReadID(const Context& context, const json& value, const std::string& what,
                              ControlID* out) {
    if (!value.is_array() || value.size() != 2 || !value[0].is_string() ||
        value[0].get<std::string>().size() != 4 || !value[1].is_number_integer())
        return context.Fail(errLayoutFile, what + ": \"id\" must be [\"sign\", number]");
    *out = {CodeOf(value[0].get<std::string>()), value[1].get<int32_t>()};
    return std::nullopt;
}

std::optional<Problem> ReadBindings(const Context& context, const json& value,
                                    const std::string& what, BTLayoutInfo* out) {
    if (!value.is_object())
        return context.Fail(errLayoutFile, what + ": \"bindings\" must be an object");
    for (auto& [side, kind] : value.items()) {
        BTSideBinding* binding = side == "top"      ? &out->binding.top
                                 : side == "left"   ? &out->binding.left
                                 : side == "bottom" ? &out->binding.bottom
                                 : side == "right"  ? &out->binding.right
                                                    : nullptr;
        if (binding == nullptr || !kind.is_string() ||
            (kind != "min" && kind != "max" && kind != "none"))
            return context.Fail(errLayoutFile, what + ": binding \"" + side +
                                                   "\" must be \"min\", \"max\" or \"none\"");
        binding->kind = kind == "min"   ? kBTLayoutBindMin
                        : kind == "max" ? kBTLayoutBindMax
                                        : kBTLayoutBindNone;
    }
    return std::nullopt;
}

std::optional<Problem> ReadProperties(const Context& context, const json& value,
                                      const std::string& what, View& view) {
    if (!value.is_object())
        return context.Fail(errLayoutFile, what + ": \"properties\" must be an object");
    for (auto& [key, property] : value.items()) {
        if (key.size() != 9 || key[4] != '/')
            return context.Fail(errLayoutFile,
                                what + ": property \"" + key + "\" must be \"crea/tagg\"");
        auto& bytes = view.properties[{CodeOf(key.substr(0, 4)), CodeOf(key.substr(5, 4))}];
        if (property.is_boolean()) {
            bytes = {uint8_t(property.get<bool>())};
        } else if (property.is_number_integer()) {
            auto number = property.get<int32_t>();
            auto* raw = reinterpret_cast<const uint8_t*>(&number);
            bytes.assign(raw, raw + sizeof number);
        } else if (property.is_string()) {
            std::string text = property.get<std::string>();
            bytes.assign(text.begin(), text.end());
        } else {
            return context.Fail(errLayoutFile, what + ": property \"" + key +
                                                   "\" must be a boolean, integer or string");
        }
    }
    return std::nullopt;
}

std::optional<Problem> ReadFeatures(const Context& context, const json& value,
                                    const std::string& what, View& view) {
    if (!value.is_array())
        return context.Fail(errLayoutFile, what + ": \"features\" must be a list");
    for (const json& name : value) {
        auto known = std::find_if(std::begin(kFeatures), std::end(kFeatures), [&](const auto& f) {
            return name.is_string() && name == f.first;
        });
        if (known == std::end(kFeatures))
            return context.Fail(errLayoutFile, what + ": unknown feature " + name.dump());
        view.features |= known->second;
    }
    return std::nullopt;
}

// Reads the plain, typed fields every control may have.
std::optional<Problem> ReadState(const Context& context, const json& entry, const std::string& what,
                                 View& view, Window& window) {
    auto typed = [&](const char* key, bool (json::*check)() const) {
        return !entry.contains(key) || (entry[key].*check)();
    };
    for (const char* key : {"minimum", "maximum", "value", "font", "segments"})
        if (!typed(key, &json::is_number_integer))
            return context.Fail(errLayoutFile, what + ": \"" + key + "\" must be an integer");
    for (const char* key : {"enabled", "visible", "default", "cancel", "single-line"})
        if (!typed(key, &json::is_boolean))
            return context.Fail(errLayoutFile, what + ": \"" + key + "\" must be true or false");
    if (!typed("text", &json::is_string))
        return context.Fail(errLayoutFile, what + ": \"text\" must be a string");
    if (!typed("command", &json::is_string) ||
        (entry.contains("command") && entry["command"].get<std::string>().size() != 4))
        return context.Fail(errLayoutFile, what + ": \"command\" must be four characters");
    if (entry.contains("command"))
        view.command = CodeOf(entry["command"].get<std::string>());
    if (entry.contains("text"))
        view.SetText(FromUTF8(entry["text"].get<std::string>()));
    if (entry.contains("segments")) {
        auto count = entry["segments"].get<uint32_t>();
        view.SetData(0, kControlSegmentCountTag, sizeof count, &count);
    }
    if (entry.contains("minimum"))
        view.SetMinimum(entry["minimum"].get<int32_t>());
    if (entry.contains("maximum"))
        view.SetMaximum(entry["maximum"].get<int32_t>());
    if (entry.contains("value"))
        view.SetValue(entry["value"].get<int32_t>());
    if (entry.contains("font")) {
        auto font = entry["font"].get<BTThemeFontID>();
        view.SetData(0, kControlFontStyleTag, sizeof font, &font);
    }
    if (entry.contains("single-line")) {
        Boolean single = entry["single-line"].get<bool>();
        view.SetData(0, kControlEditTextSingleLineTag, sizeof single, &single);
    }
    view.SetEnabled(entry.value("enabled", true));
    view.SetVisible(entry.value("visible", true));
    if (entry.value("default", false))
        window.SetDefaultButton(&view);
    if (entry.value("cancel", false))
        window.SetCancelButton(&view);
    return std::nullopt;
}

std::optional<Problem> BuildControls(const Context& context, const json& list, View& parent,
                                     Window& window, const std::string& where);

// A control of a built-in kind, or with "kind": "object", a view of the registered custom class
// named by "class".
std::optional<Problem> MakeControl(const Context& context, const json& entry,
                                   const std::string& what, std::shared_ptr<View>* out) {
    std::string kindName = entry["kind"].get<std::string>();
    if (kindName != "object") {
        std::optional<OSType> kind = KindFromName(kindName);
        if (!kind)
            return context.Fail(errUnknownControl,
                                what + ": unknown control kind \"" + kindName + "\"");
        *out = MakeView(*kind);
        return std::nullopt;
    }
    if (!entry.contains("class") || !entry["class"].is_string())
        return context.Fail(errLayoutFile, what + ": an \"object\" needs a \"class\" id");
    std::string classID = entry["class"].get<std::string>();
    StringHolder id(MakeBCString(FromUTF8(classID)));
    BTObjectRef object = nullptr;
    if (StatusCode status = BTObjectCreate(id.get(), nullptr, &object); status != noErr)
        return context.Fail(status, what + ": no view of class \"" + classID + "\" could be made");
    View* view = View::From(reinterpret_cast<ControlRef>(object));
    *out = view->Shared();
    ReleaseLoose(view);
    return std::nullopt;
}

std::optional<Problem> BuildControl(const Context& context, const json& entry, View& parent,
                                    Window& window, const std::string& what) {
    if (!entry.is_object())
        return context.Fail(errLayoutFile, what + ": must be an object");
    if (!entry.contains("kind") || !entry["kind"].is_string())
        return context.Fail(errLayoutFile, what + ": has no \"kind\"");
    std::shared_ptr<View> view;
    if (auto problem = MakeControl(context, entry, what, &view))
        return problem;
    BGRect frame{};
    if (!entry.contains("frame"))
        return context.Fail(errLayoutFile, what + ": has no \"frame\"");
    if (auto problem = ReadRect(context, entry["frame"], what, &frame))
        return problem;
    parent.AddSubview(view);
    view->SetFrame(frame);
    if (entry.contains("id"))
        if (auto problem = ReadID(context, entry["id"], what, &view->id))
            return problem;
    if (auto problem = ReadState(context, entry, what, *view, window))
        return problem;
    if (entry.contains("bindings"))
        if (auto problem = ReadBindings(context, entry["bindings"], what, &view->layout))
            return problem;
    if (entry.contains("properties"))
        if (auto problem = ReadProperties(context, entry["properties"], what, *view))
            return problem;
    if (entry.contains("features"))
        if (auto problem = ReadFeatures(context, entry["features"], what, *view))
            return problem;
    if (entry.contains("controls"))
        return BuildControls(context, entry["controls"], *view, window, what);
    return std::nullopt;
}

std::optional<Problem> BuildControls(const Context& context, const json& list, View& parent,
                                     Window& window, const std::string& where) {
    if (!list.is_array())
        return context.Fail(errLayoutFile, where + ": \"controls\" must be a list");
    for (size_t i = 0; i < list.size(); ++i) {
        std::string what =
            (where.empty() ? "" : where + " > ") + "control " + std::to_string(i + 1);
        if (list[i].is_object() && list[i].contains("id") && list[i]["id"].is_array())
            what += " " + list[i]["id"].dump();
        if (auto problem = BuildControl(context, list[i], parent, window, what))
            return problem;
    }
    if (auto* splitter = dynamic_cast<Splitter*>(&parent))
        splitter->Arrange();
    return std::nullopt;
}

std::optional<Problem> ReadWindowShape(const Context& context, const json& entry,
                                       WindowClass* windowClass, WindowAttributes* attributes,
                                       Rect* bounds) {
    if (entry.contains("class") && !entry["class"].is_string())
        return context.Fail(errLayoutFile, "\"class\" must be a string");
    std::string className = entry.value("class", std::string("document"));
    auto known = std::find_if(std::begin(kClasses), std::end(kClasses),
                              [&](const auto& c) { return className == c.first; });
    if (known == std::end(kClasses))
        return context.Fail(errLayoutFile, "unknown window class \"" + className + "\"");
    *windowClass = known->second;
    if (entry.contains("attributes")) {
        if (!entry["attributes"].is_array())
            return context.Fail(errLayoutFile, "\"attributes\" must be a list");
        for (const json& name : entry["attributes"]) {
            auto attribute = std::find_if(std::begin(kAttributes), std::end(kAttributes),
                                          [&](const auto& a) { return name == a.first; });
            if (attribute == std::end(kAttributes))
                return context.Fail(errLayoutFile, "unknown window attribute " + name.dump());
            *attributes |= attribute->second;
        }
    }
    BGRect frame{};
    if (!entry.contains("frame"))
        return context.Fail(errLayoutFile, "has no \"frame\"");
    if (auto problem = ReadRect(context, entry["frame"], "window", &frame))
        return problem;
    BGRectToRect(frame, bounds);
    return std::nullopt;
}

std::optional<Problem> Build(const Context& context, const json& entry, WindowRef* outWindow) {
    if (!entry.is_object())
        return context.Fail(errLayoutFile, "must be an object");
    WindowClass windowClass = kDocumentWindowClass;
    WindowAttributes attributes = 0;
    Rect bounds{};
    if (auto problem = ReadWindowShape(context, entry, &windowClass, &attributes, &bounds))
        return problem;
    if (entry.contains("title") && !entry["title"].is_string())
        return context.Fail(errLayoutFile, "\"title\" must be a string");
    WindowRef ref = nullptr;
    if (StatusCode status = CreateNewWindow(windowClass, attributes, &bounds, &ref);
        status != noErr)
        return context.Fail(status, "the window could not be made");
    Window& window = *Window::From(ref);
    window.title = FromUTF8(entry.value("title", std::string()));
    if (entry.contains("controls"))
        if (auto problem = BuildControls(context, entry["controls"], window.Root(), window, "")) {
            DisposeWindow(ref);
            return problem;
        }
    *outWindow = ref;
    return std::nullopt;
}

} // namespace

void SetLastError(std::string message) {
    LastError() = std::move(message);
}

StatusCode Load(const std::string& path, LayoutRef* outLayout) {
    std::ifstream file(path);
    if (!file) {
        SetLastError(path + ": the layout file cannot be read");
        return errLayoutFile;
    }
    std::stringstream text;
    text << file.rdbuf();
    json document = json::parse(text.str(), nullptr, false);
    if (document.is_discarded()) {
        SetLastError(path + ": the layout file is not valid JSON");
        return errLayoutFile;
    }
    if (!document.is_object() || !document.contains("windows") ||
        !document["windows"].is_object()) {
        SetLastError(path + ": the layout file has no \"windows\" object");
        return errLayoutFile;
    }
    *outLayout = new OpaqueLayoutRef{path, std::move(document)};
    return noErr;
}

StatusCode BuildWindow(const OpaqueLayoutRef& layout, const std::string& name,
                       WindowRef* outWindow) {
    Context context{layout, name};
    const json& windows = layout.document["windows"];
    if (!windows.contains(name)) {
        SetLastError(context.Fail(errNoSuchLayoutWindow, "no such window in the file").message);
        return errNoSuchLayoutWindow;
    }
    if (auto problem = Build(context, windows[name], outWindow)) {
        SetLastError(problem->message);
        return problem->status;
    }
    return noErr;
}

} // namespace basalt::toolbox::layout

using namespace basalt::toolbox;

extern "C" {

StatusCode CreateLayoutReferenceWithPath(const char* inPath, LayoutRef* outLayoutRef) {
    if (inPath == nullptr || outLayoutRef == nullptr)
        return paramErr;
    return layout::Load(inPath, outLayoutRef);
}

StatusCode CreateLayoutReferenceWithBCBundle(BCBundleRef inBundle, BCStringRef inName,
                                             LayoutRef* outLayoutRef) {
    if (inBundle == nullptr || inName == nullptr || outLayoutRef == nullptr)
        return paramErr;
    StringHolder type(BCStringCreateWithCString(nullptr, "json", kBCStringEncodingUTF8));
    BCURLRef url = BCBundleCopyResourceURL(inBundle, inName, type.get(), nullptr);
    std::string name = ToUTF8(FromBCString(inName));
    if (url == nullptr) {
        layout::SetLastError(name + ".json: the bundle has no such layout file");
        return errLayoutFile;
    }
    uint8_t path[4096];
    bool ok = BCURLGetFileSystemRepresentation(url, true, path, sizeof path);
    BCRelease(url);
    if (!ok) {
        layout::SetLastError(name + ".json: the layout file's path is too long");
        return errLayoutFile;
    }
    return layout::Load(reinterpret_cast<const char*>(path), outLayoutRef);
}

StatusCode CreateWindowFromLayout(LayoutRef inLayoutRef, BCStringRef inName, WindowRef* outWindow) {
    if (inLayoutRef == nullptr || inName == nullptr || outWindow == nullptr)
        return paramErr;
    return layout::BuildWindow(*inLayoutRef, ToUTF8(FromBCString(inName)), outWindow);
}

void DisposeLayoutReference(LayoutRef inLayoutRef) {
    delete inLayoutRef;
}

BCStringRef BTCopyLastLayoutError(void) {
    const std::string& message = layout::LastError();
    return message.empty()
               ? nullptr
               : BCStringCreateWithCString(nullptr, message.c_str(), kBCStringEncodingUTF8);
}

} // extern "C"
