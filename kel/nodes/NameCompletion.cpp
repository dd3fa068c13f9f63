#include "kel/nodes/NameCompletion.h"

#include "kel/foundation/TSystemLocaleCollator.h"
#include "kel/nodes/TKelNodeContainerIterator.h"

#include <vector>

namespace {

const TSystemLocaleCollator& Collator() {
    static const TSystemLocaleCollator collator;
    return collator;
}

TUniString Slash() {
    const uint16_t slash = '/';
    return TUniString(1, &slash);
}

// The first visible child of the root whose shown name begins with prefix, and its 1-based
// position in the walk (one past the last child when none matched).
TKelNode FindVolume(const TKelNode& root, const TUniString& prefix, uint32_t& position) {
    position = 1;
    TKelNodeContainerIterator children(root, true);
    if (!children.IsValid()) {
        return TKelNode();
    }
    for (TKelNode child = children.First(); !child.IsEmpty(); children.Next(child), ++position) {
        TUniString name;
        if (child.IsVisible() && child.GetPropertyAsString(NodeCode("dnam"), name) == noErr &&
            name.BeginsWith(prefix, Collator())) {
            return child;
        }
    }
    return TKelNode();
}

// The last segment of text, rewritten backwards in the case of name.
void TakeCase(TUniString& text, const TUniString& name, uint32_t count) {
    std::vector<uint16_t> chars(text.Characters(), text.Characters() + text.Length());
    for (size_t i = chars.size(), j = count; i > 0 && j > 0 && chars[i - 1] != '/'; --i, --j) {
        chars[i - 1] = name.Characters()[j - 1];
    }
    text.Set(TUniString(uint32_t(chars.size()), chars.data()));
}

} // namespace

uint32_t CompleteNode(const TKelNode& base, const TUniString& text, bool, TKelNode& found,
                      bool& exactCase) {
    TKelNode b = base;
    TUniString t = text;
    found = TKelNode();
    exactCase = true;
    TKelNode root(TKelNode::GetRootNodeRef(), true);

    bool absolute = false;
    if (t.BeginsWith(Slash(), Collator())) {
        if (t.Length() == 1) {
            found = root;
            return 0;
        }
        if (!b.IsEmpty() && !b.IsRoot()) {
            t = t.GetSubString(2, t.Length());
        } else {
            b = root;
            absolute = true;
        }
    }
    std::vector<TUniString> segments;
    t.Tokenize(segments, '/');

    if (b.IsRoot() && !segments.empty() && segments.front().Length() != 0) {
        uint32_t position = 0;
        TKelNode volume = FindVolume(b, segments.front(), position);
        BCIndex count = 0;
        NodeGetChildrenCount(b.PeekNodeRef(), &count);
        if (absolute && count < BCIndex(position)) {
            b = TKelNode::GetBootNode();
        } else if (volume.IsNetwork() && segments.size() >= 2) {
            if (t.Length() <= segments.front().Length() + 1) {
                found = volume;
                return 0;
            }
            t = t.GetSubString(segments.front().Length() + 2, t.Length());
            t.Tokenize(segments, '/');
            b = volume;
        }
    }

    TKelNode parent;
    TUniString rest;
    if (!segments.empty()) {
        if (segments.front().Length() != 0 && segments.front().Characters()[0] == '~') {
            b = TKelNode();
            if (segments.size() == 1) {
                found = TKelNode(segments, b);
                return 0;
            }
        }
        if (segments.back().Length() != 0) {
            rest = segments.back();
            segments.back() = TUniString();
        }
        parent = segments.size() >= 2 ? TKelNode(segments, b) : b;
    }
    if (parent.IsEmpty()) {
        return 0;
    }
    if (rest.Length() == 0) {
        found = parent;
        return 0;
    }
    found = parent.GetChildStartsWith(rest, true, true);
    if (found.IsEmpty()) {
        found = parent.GetChildStartsWith(rest, true, false);
        exactCase = false;
    }
    if (!found.IsContainer()) {
        found = TKelNode();
        return 0;
    }
    return rest.Length();
}

bool CompleteString(const TKelNode& base, TUniString& text, TUniString& completion,
                    bool& exactCase) {
    TKelNode found;
    uint32_t count = 0;
    if (base.IsEmpty() || base == TKelNode::GetBootNode()) {
        count = CompleteNode(TKelNode::GetVolumesNode(), text, false, found, exactCase);
    }
    if (found.IsEmpty()) {
        count = CompleteNode(base, text, false, found, exactCase);
    }
    if (count == 0 || found.IsEmpty()) {
        return false;
    }
    TUniString name;
    found.GetPropertyAsString(NodeCode("dnam"), name);
    name.Append(uint16_t('/'));
    if (!exactCase) {
        TakeCase(text, name, count);
    }
    completion = name.GetSubString(count + 1, name.Length());
    return true;
}
