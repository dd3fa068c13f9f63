#include "kel/foundation/TUniString.h"

#include <algorithm>
#include <cstring>

uint16_t* TUniString::NewBuffer(uint32_t forCapacity) {
    auto* made = new uint16_t[std::max(forCapacity, kDefaultCapacity) + 1];
    made[0] = 1;
    return made;
}

void TUniString::DropBuffer(uint16_t* shared) {
    if (shared != nullptr && --shared[0] == 0) {
        delete[] shared;
    }
}

TUniString::TUniString(const TUniString& other)
    : capacity(std::max(other.capacity, kDefaultCapacity)), length(other.length),
      buffer(other.buffer) {
    if (buffer != nullptr) {
        ++buffer[0];
    }
}

TUniString::TUniString(uint32_t count, const uint16_t* chars)
    : capacity(std::max(count, kDefaultCapacity)), buffer(NewBuffer(capacity)) {
    if (chars != nullptr) {
        std::memcpy(Text(), chars, count * sizeof(uint16_t));
        length = count;
    }
}

TUniString::TUniString(const uint8_t* lengthPrefixed, ScriptCode script) {
    Set(lengthPrefixed, script, false);
}

TUniString::TUniString(const char* text, ScriptCode script) {
    uint32_t byteLength = text == nullptr ? 0 : static_cast<uint32_t>(std::strlen(text));
    capacity = std::max(byteLength, kDefaultCapacity);
    Set(text, byteLength, script, false);
}

TUniString::TUniString(BCStringRef string) {
    if (string != nullptr) {
        capacity = std::max(static_cast<uint32_t>(BCStringGetLength(string)), kDefaultCapacity);
    }
    Set(string, false);
}

TUniString& TUniString::operator=(const TUniString& other) {
    Set(other);
    return *this;
}

TUniString::~TUniString() {
    DropBuffer(buffer);
}

void TUniString::AllocateBuffer() const {
    if (buffer == nullptr) {
        buffer = NewBuffer(capacity);
        return;
    }
    if (buffer[0] < 2) {
        return;
    }
    uint16_t* own = NewBuffer(capacity);
    std::memcpy(own + 1, Text(), length * sizeof(uint16_t));
    DropBuffer(buffer);
    buffer = own;
}

void TUniString::SetCapacity(uint32_t newCapacity) {
    if (capacity == newCapacity) {
        return;
    }
    capacity = newCapacity;
    if (buffer == nullptr) {
        return;
    }
    length = std::min(length, capacity);
    uint16_t* resized = NewBuffer(capacity);
    std::memcpy(resized + 1, Text(), length * sizeof(uint16_t));
    DropBuffer(buffer);
    buffer = resized;
}

void TUniString::Set(BCStringRef string, bool adjust) {
    if (string == nullptr) {
        length = 0;
        if (buffer != nullptr) {
            AllocateBuffer();
        }
        return;
    }
    auto sourceLength = static_cast<uint32_t>(BCStringGetLength(string));
    if (adjust) {
        SetCapacity(sourceLength);
    }
    AllocateBuffer();
    length = std::min(sourceLength, capacity);
    BCStringGetCharacters(string, BCRangeMake(0, length), Text());
}

void TUniString::Set(const uint8_t* lengthPrefixed, ScriptCode script, bool adjust) {
    if (lengthPrefixed == nullptr) {
        Set(nullptr, 0, script, adjust);
        return;
    }
    Set(reinterpret_cast<const char*>(lengthPrefixed + 1), lengthPrefixed[0], script, adjust);
}

void TUniString::Set(const char* text, uint32_t byteLength, ScriptCode script, bool adjust) {
    length = 0;
    if (adjust) {
        SetCapacity(byteLength);
    }
    if (text == nullptr || byteLength == 0) {
        return;
    }
    TextToUniString(script, text, byteLength, *this);
}

void TUniString::Set(const TUniString& other) {
    if (capacity != other.capacity) {
        AllocateBuffer();
        length = std::min(other.length, capacity);
        if (length > 0) {
            std::memcpy(Text(), other.Text(), length * sizeof(uint16_t));
        }
        return;
    }
    if (other.buffer != nullptr) {
        ++other.buffer[0];
    }
    DropBuffer(buffer);
    buffer = other.buffer;
    length = other.length;
}

void TUniString::Set(const std::vector<TUniString>& parts, uint32_t first, uint32_t last,
                     uint16_t separator) {
    length = 0;
    if (parts.empty()) {
        return;
    }
    last = std::min(last, static_cast<uint32_t>(parts.size() - 1));
    for (uint32_t index = first; index <= last; ++index) {
        if (index > first) {
            Append(separator);
        }
        Append(parts[index]);
    }
}

void TUniString::Append(const TUniString& other) {
    if (other.length == 0) {
        return;
    }
    if (length + other.length > capacity) {
        SetCapacity(capacity + other.length);
    }
    // Appending a string to itself: keep its buffer alive while this one is replaced.
    TUniString source(other);
    AllocateBuffer();
    std::memcpy(Text() + length, source.Text(), source.length * sizeof(uint16_t));
    length += source.length;
}

void TUniString::Append(uint16_t character) {
    if (length >= capacity) {
        SetCapacity(capacity + 16);
    }
    AllocateBuffer();
    Text()[length++] = character;
}

TStringRef TUniString::AsBCString() const {
    if (buffer == nullptr) {
        return {};
    }
    return {BCStringCreateWithCharacters(kBCAllocatorDefault, Text(), length), false};
}

void TUniString::Mirror() {
    if (buffer != nullptr) {
        std::reverse(Text(), Text() + length);
    }
}

TUniString TUniString::GetSubString(uint32_t first, uint32_t last) const {
    first = std::max(first, 1u);
    last = std::min(std::max(last, 1u), length);
    if (first > last) {
        return {};
    }
    return {last - first + 1, Text() + first - 1};
}

bool TUniString::BeginsWith(const TUniString& prefix, const ICollator& collator) const {
    if (length < prefix.length) {
        return false;
    }
    // For an empty prefix this takes one character, so only an empty string matches it.
    TUniString head = GetSubString(1, prefix.length);
    return collator(head.length, head.Characters(), prefix.length, prefix.Characters()) == 0;
}

void TUniString::Tokenize(std::vector<TUniString>& out, uint16_t separator) const {
    out.clear();
    if (length == 0) {
        return;
    }
    uint32_t start = 0;
    for (uint32_t index = 0; index <= length; ++index) {
        if (index == length || Text()[index] == separator) {
            out.emplace_back(index - start, Text() + start);
            start = index + 1;
        }
    }
}
