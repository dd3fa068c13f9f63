#include "basalt/gridbrowser/CellData.h"

namespace basalt::gridbrowser {

CellData::~CellData() {
    if (icon_ != nullptr)
        ReleaseIconRef(icon_);
    if (text_ != nullptr)
        BCRelease(text_);
}

void CellData::SetIcon(IconRef icon) {
    if (icon != nullptr)
        AcquireIconRef(icon);
    if (icon_ != nullptr)
        ReleaseIconRef(icon_);
    icon_ = icon;
}

void CellData::SetText(BCStringRef text) {
    BCStringRef copy = text != nullptr ? BCStringCreateCopy(nullptr, text) : nullptr;
    if (text_ != nullptr)
        BCRelease(text_);
    text_ = copy;
}

} // namespace basalt::gridbrowser

using basalt::gridbrowser::CellData;

StatusCode SetGridBrowserItemDataBooleanValue(GridBrowserItemDataRef itemData, bool value) {
    if (itemData == nullptr)
        return paramErr;
    CellData::From(itemData)->SetBoolean(value);
    return noErr;
}

StatusCode SetGridBrowserItemDataItemID(GridBrowserItemDataRef itemData, GridBrowserItemID item) {
    if (itemData == nullptr)
        return paramErr;
    CellData::From(itemData)->SetItem(item);
    return noErr;
}

StatusCode SetGridBrowserItemDataValue(GridBrowserItemDataRef itemData, int32_t value) {
    if (itemData == nullptr)
        return paramErr;
    CellData::From(itemData)->SetValue(value);
    return noErr;
}

StatusCode SetGridBrowserItemDataIcon(GridBrowserItemDataRef itemData, IconRef icon) {
    if (itemData == nullptr)
        return paramErr;
    CellData::From(itemData)->SetIcon(icon);
    return noErr;
}

StatusCode SetGridBrowserItemDataText(GridBrowserItemDataRef itemData, BCStringRef text) {
    if (itemData == nullptr)
        return paramErr;
    CellData::From(itemData)->SetText(text);
    return noErr;
}

StatusCode SetGridBrowserItemDataLongDateTime(GridBrowserItemDataRef itemData,
                                              const LongDateTime* dateTime) {
    if (itemData == nullptr || dateTime == nullptr)
        return paramErr;
    CellData::From(itemData)->SetDate(*dateTime);
    return noErr;
}

StatusCode GetGridBrowserItemDataProperty(GridBrowserItemDataRef itemData,
                                          GridBrowserPropertyID* property) {
    if (itemData == nullptr || property == nullptr)
        return paramErr;
    *property = CellData::From(itemData)->Property();
    return noErr;
}
