// Descriptors and lists. A list's handle holds a 32-bit count and then each item as its
// 32-bit type, 32-bit size and data, in order; nested lists are items of type "list".

#include "basalt/files/BEDesc.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

struct Item {
    DescType type;
    std::vector<uint8_t> data;
};

std::vector<uint8_t> HandleBytes(Handle handle) {
    if (handle == nullptr || *handle == nullptr)
        return {};
    Size size = GetHandleSize(handle);
    return std::vector<uint8_t>(*handle, *handle + size);
}

StatusCode FillHandle(Handle* handle, const void* data, Size size) {
    if (*handle == nullptr) {
        *handle = NewHandle(size);
        if (*handle == nullptr)
            return memFullErr;
    } else {
        SetHandleSize(*handle, size);
        if (GetHandleSize(*handle) != size)
            return memFullErr;
    }
    if (size > 0)
        std::memcpy(**handle, data, static_cast<size_t>(size));
    return noErr;
}

bool ReadItems(const BEDesc* list, std::vector<Item>& items) {
    std::vector<uint8_t> bytes = HandleBytes(list->dataHandle);
    uint32_t count = 0;
    if (bytes.size() < sizeof count)
        return false;
    std::memcpy(&count, bytes.data(), sizeof count);
    size_t at = sizeof count;
    for (uint32_t i = 0; i < count; ++i) {
        uint32_t header[2];
        if (bytes.size() - at < sizeof header)
            return false;
        std::memcpy(header, bytes.data() + at, sizeof header);
        at += sizeof header;
        if (bytes.size() - at < header[1])
            return false;
        items.push_back({header[0], {bytes.begin() + at, bytes.begin() + at + header[1]}});
        at += header[1];
    }
    return true;
}

StatusCode WriteItems(BEDesc* list, const std::vector<Item>& items) {
    std::vector<uint8_t> bytes(sizeof(uint32_t));
    uint32_t count = static_cast<uint32_t>(items.size());
    std::memcpy(bytes.data(), &count, sizeof count);
    for (const Item& item : items) {
        uint32_t header[2] = {item.type, static_cast<uint32_t>(item.data.size())};
        const auto* h = reinterpret_cast<const uint8_t*>(header);
        bytes.insert(bytes.end(), h, h + sizeof header);
        bytes.insert(bytes.end(), item.data.begin(), item.data.end());
    }
    return FillHandle(&list->dataHandle, bytes.data(), static_cast<Size>(bytes.size()));
}

StatusCode ListItems(const BEDescList* list, std::vector<Item>& items) {
    if (list == nullptr)
        return paramErr;
    if (list->descriptorType != typeBEList)
        return errBENotBEList;
    return ReadItems(list, items) ? StatusCode(noErr) : StatusCode(errBECorruptData);
}

} // namespace

extern "C" {

void BEInitializeDesc(BEDesc* desc) {
    if (desc != nullptr) {
        desc->descriptorType = typeNull;
        desc->dataHandle = nullptr;
    }
}

StatusCode BECreateDesc(DescType type, const void* data, Size size, BEDesc* result) {
    if (result == nullptr || size < 0 || (size > 0 && data == nullptr))
        return paramErr;
    BEInitializeDesc(result);
    if (type == typeNull)
        return noErr;
    BEDesc made{type, nullptr};
    if (StatusCode status = FillHandle(&made.dataHandle, data, size))
        return status;
    *result = made;
    return noErr;
}

StatusCode BEReplaceDescData(DescType type, const void* data, Size size, BEDesc* desc) {
    if (desc == nullptr || size < 0 || (size > 0 && data == nullptr))
        return paramErr;
    if (desc->dataHandle == nullptr)
        return BECreateDesc(type, data, size, desc);
    if (StatusCode status = FillHandle(&desc->dataHandle, data, size))
        return status;
    desc->descriptorType = type;
    return noErr;
}

StatusCode BEDuplicateDesc(const BEDesc* desc, BEDesc* result) {
    if (desc == nullptr || result == nullptr)
        return paramErr;
    std::vector<uint8_t> bytes = HandleBytes(desc->dataHandle);
    if (desc->dataHandle == nullptr) {
        *result = {desc->descriptorType, nullptr};
        return noErr;
    }
    return BECreateDesc(desc->descriptorType, bytes.data(), static_cast<Size>(bytes.size()),
                        result);
}

StatusCode BEDisposeDesc(BEDesc* desc) {
    if (desc == nullptr)
        return paramErr;
    if (desc->dataHandle != nullptr)
        DisposeHandle(desc->dataHandle);
    BEInitializeDesc(desc);
    return noErr;
}

Size BEGetDescDataSize(const BEDesc* desc) {
    if (desc == nullptr || desc->dataHandle == nullptr || *desc->dataHandle == nullptr)
        return 0;
    return GetHandleSize(desc->dataHandle);
}

StatusCode BEGetDescData(const BEDesc* desc, void* buffer, Size maximumSize) {
    if (desc == nullptr || maximumSize < 0 || (maximumSize > 0 && buffer == nullptr))
        return paramErr;
    Size size = std::min(BEGetDescDataSize(desc), maximumSize);
    if (size > 0)
        std::memcpy(buffer, *desc->dataHandle, static_cast<size_t>(size));
    return noErr;
}

StatusCode BECreateList(const void*, Size factoredSize, Boolean isRecord, BEDescList* result) {
    if (result == nullptr || factoredSize != 0 || isRecord)
        return paramErr;
    BEDesc list{typeBEList, nullptr};
    if (StatusCode status = WriteItems(&list, {}))
        return status;
    *result = list;
    return noErr;
}

StatusCode BECountItems(const BEDescList* list, long* count) {
    std::vector<Item> items;
    if (count == nullptr)
        return paramErr;
    if (StatusCode status = ListItems(list, items))
        return status;
    *count = static_cast<long>(items.size());
    return noErr;
}

StatusCode BEPutPtr(BEDescList* list, long index, DescType type, const void* data, Size size) {
    std::vector<Item> items;
    if (size < 0 || (size > 0 && data == nullptr))
        return paramErr;
    if (StatusCode status = ListItems(list, items))
        return status;
    long count = static_cast<long>(items.size());
    if (index < 0 || index > count + 1)
        return errBEIllegalIndex;
    const auto* bytes = static_cast<const uint8_t*>(data);
    Item item{type, std::vector<uint8_t>(bytes, bytes + size)};
    if (index == 0 || index == count + 1)
        items.push_back(std::move(item));
    else
        items[static_cast<size_t>(index - 1)] = std::move(item);
    return WriteItems(list, items);
}

StatusCode BEPutDesc(BEDescList* list, long index, const BEDesc* desc) {
    if (desc == nullptr)
        return paramErr;
    std::vector<uint8_t> bytes = HandleBytes(desc->dataHandle);
    return BEPutPtr(list, index, desc->descriptorType, bytes.data(),
                    static_cast<Size>(bytes.size()));
}

StatusCode BEDeleteItem(BEDescList* list, long index) {
    std::vector<Item> items;
    if (StatusCode status = ListItems(list, items))
        return status;
    if (index < 1 || index > static_cast<long>(items.size()))
        return errBEIllegalIndex;
    items.erase(items.begin() + (index - 1));
    return WriteItems(list, items);
}

StatusCode BEGetNthDesc(const BEDescList* list, long index, DescType desiredType,
                        BEKeyword* keyword, BEDesc* result) {
    std::vector<Item> items;
    if (result == nullptr)
        return paramErr;
    if (StatusCode status = ListItems(list, items))
        return status;
    if (index < 1 || index > static_cast<long>(items.size()))
        return errBEIllegalIndex;
    const Item& item = items[static_cast<size_t>(index - 1)];
    if (keyword != nullptr)
        *keyword = keyBEListItem;
    BEDesc raw;
    if (StatusCode status =
            BECreateDesc(item.type, item.data.data(), static_cast<Size>(item.data.size()), &raw))
        return status;
    if (desiredType == typeWildCard || desiredType == item.type) {
        *result = raw;
        return noErr;
    }
    StatusCode status = BECoerceDesc(&raw, desiredType, result);
    BEDisposeDesc(&raw);
    return status;
}

StatusCode BEGetNthPtr(const BEDescList* list, long index, DescType desiredType, BEKeyword* keyword,
                       DescType* typeCode, void* data, Size maximumSize, Size* actualSize) {
    BEDesc item;
    if (StatusCode status = BEGetNthDesc(list, index, desiredType, keyword, &item))
        return status;
    if (typeCode != nullptr)
        *typeCode = item.descriptorType;
    if (actualSize != nullptr)
        *actualSize = BEGetDescDataSize(&item);
    StatusCode status = BEGetDescData(&item, data, maximumSize);
    BEDisposeDesc(&item);
    return status;
}

} // extern "C"
