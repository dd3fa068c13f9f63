#pragma once

// One cell asked of the data source: the record behind a GridBrowserItemDataRef. It lives on
// the stack of the code that asks and goes when the cell has been drawn or read, so the
// control keeps no cell contents between frames.

#include "basalt/gridbrowser/GridBrowser.h"

#include <optional>

namespace basalt::gridbrowser {

class CellData {
public:
    explicit CellData(GridBrowserPropertyID property) : property_(property) {}
    ~CellData();
    CellData(const CellData&) = delete;
    CellData& operator=(const CellData&) = delete;

    static CellData* From(GridBrowserItemDataRef ref) { return static_cast<CellData*>(ref); }
    GridBrowserItemDataRef Ref() { return this; }

    GridBrowserPropertyID Property() const { return property_; }
    void SetBoolean(bool value) { boolean_ = value; }
    void SetValue(int32_t value) { value_ = value; }
    void SetItem(GridBrowserItemID item) { item_ = item; }
    void SetIcon(IconRef icon);
    void SetText(BCStringRef text);
    void SetDate(LongDateTime date) { date_ = date; }

    std::optional<bool> Boolean() const { return boolean_; }
    std::optional<int32_t> Value() const { return value_; }
    std::optional<GridBrowserItemID> Item() const { return item_; }
    IconRef Icon() const { return icon_; }
    BCStringRef Text() const { return text_; }
    std::optional<LongDateTime> Date() const { return date_; }

private:
    GridBrowserPropertyID property_;
    std::optional<bool> boolean_;
    std::optional<int32_t> value_;
    std::optional<GridBrowserItemID> item_;
    IconRef icon_ = nullptr;
    BCStringRef text_ = nullptr;
    std::optional<LongDateTime> date_;
};

} // namespace basalt::gridbrowser
