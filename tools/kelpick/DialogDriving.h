#pragma once

// Acting on a browse dialog's parts as a person does, by the names and titles they show. Each
// call posts the clicks and answers nothing when it could, or why it could not.

#include <basalt/BasaltToolbox.h>
#include <optional>
#include <string>

using Refusal = std::optional<std::string>;

// Clicks the browser's row shown as name (in list view's rows, or column view's columns from
// the last), clicks times: twice opens it.
Refusal ClickBrowserRow(WindowRef window, const std::string& name, uint32_t modifiers, int clicks);
// The alert that a dialog has put up over its window (the replace alert of a save dialog, say),
// or the window itself when there is none.
WindowRef AlertOver(WindowRef window);
// Presses the alert's Cancel button, or its only button; false if it has neither.
bool AnswerCancel(WindowRef alert);
// Presses an alert's item by its number.
Refusal ClickItem(WindowRef window, int16_t item);
// Presses the visible button whose title is label.
Refusal ClickButton(WindowRef window, const std::string& label);
// Clicks the sidebar's row shown as name, where the sidebar draws it.
Refusal ClickSidebarRow(WindowRef window, const std::string& name);
// Chooses the item titled title from the type popup, or the save dialog's format popup.
Refusal ChooseTypeItem(WindowRef window, const std::string& title);
// Clicks the list or the column segment of the view control.
Refusal ChooseView(WindowRef window, bool columnView);
