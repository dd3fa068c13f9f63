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

namespace {

template <typename Apply>
StatusCode WithCell(GridBrowserItemDataRef itemData, Apply apply) {
    if (itemData == nullptr)
        return paramErr;
    apply(*CellData::From(itemData));
    return noErr;
}

} // namespace

StatusCode SetGridBrowserItemDataBooleanValue(GridBrowserItemDataRef itemData, bool value) {
    return WithCell(itemData, [&](CellData& cell) { cell.SetBoolean(value); });
}

StatusCode SetGridBrowserItemDataItemID(GridBrowserItemDataRef itemData, GridBrowserItemID item) {
    return WithCell(itemData, [&](CellData& cell) { cell.SetItem(item); });
}

StatusCode SetGridBrowserItemDataValue(GridBrowserItemDataRef itemData, int32_t value) {
    return WithCell(itemData, [&](CellData& cell) { cell.SetValue(value); });
}

StatusCode SetGridBrowserItemDataIcon(GridBrowserItemDataRef itemData, IconRef icon) {
    return WithCell(itemData, [&](CellData& cell) { cell.SetIcon(icon); });
}

StatusCode SetGridBrowserItemDataText(GridBrowserItemDataRef itemData, BCStringRef text) {
    return WithCell(itemData, [&](CellData& cell) { cell.SetText(text); });
}

StatusCode SetGridBrowserItemDataLongDateTime(GridBrowserItemDataRef itemData,
                                              const LongDateTime* dateTime) {
    if (dateTime == nullptr)
        return paramErr;
    return WithCell(itemData, [&](CellData& cell) { cell.SetDate(*dateTime); });
}

StatusCode GetGridBrowserItemDataProperty(GridBrowserItemDataRef itemData,
                                          GridBrowserPropertyID* property) {
    if (property == nullptr)
        return paramErr;
    return WithCell(itemData, [&](CellData& cell) { *property = cell.Property(); });
}
