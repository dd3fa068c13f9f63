#pragma once

// A shown window bound to a dialog, holding one name field with the keyboard focus and an
// observer that records what the field reports.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "kel/dialogs/TTextEdit.h"
#include "kel/interface/KelBaseDialog.h"
#include "tests/kel/foundation/StringTesting.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace keltest {

class RecordingObserver : public ITextEditObserver {
public:
    void FocusChanged(unsigned char gained) override { focusChanges.push_back(gained != 0); }
    bool CharacterTyped(unsigned short character) override {
        if (whenTyped) {
            whenTyped();
        }
        return character == consumed;
    }
    void TextChanged(const TStringRef& text) override { texts.push_back(Utf8(text)); }
    void KeyError(TStringRef) override {}

    std::vector<bool> focusChanges;
    std::vector<std::string> texts;
    unsigned short consumed = 0;
    std::function<void()> whenTyped;
};

class EditFieldWindow : public ::testing::Test {
protected:
    void SetUp() override {
        const Rect content{100, 100, 300, 500};
        ASSERT_EQ(CreateNewWindow(kDocumentWindowClass, 0, &content, &window), noErr);
        const Rect bounds{20, 20, 44, 300};
        ControlRef control = nullptr;
        ASSERT_EQ(BTCreateControl(window, &bounds, kControlKindEditUnicodeText, nullptr, &control),
                  noErr);
        DialogRef bound = nullptr;
        ASSERT_EQ(_CreatePrivateDialogRefAndBindToWindowRef(window, &bound), noErr);
        dialog = MakeDialog();
        dialog->SetDialogRef(bound);
        field = std::make_unique<TTextEdit>(dialog.get(), &observer, true, control);
        ShowWindow(window);
        field->SetFocus(kControlEditTextPart);
        basalt::headless::HeadlessDriver::RunUntilIdle();
        basalt::headless::HeadlessDriver::ResetBeepCount();
    }
    void TearDown() override {
        field.reset();
        dialog.reset();
    }

    virtual std::unique_ptr<KelBaseDialog> MakeDialog() {
        return std::make_unique<KelBaseDialog>();
    }

    static void Type(const std::string& utf8) {
        basalt::headless::HeadlessDriver::TypeText(utf8);
        basalt::headless::HeadlessDriver::RunUntilIdle();
    }
    std::string Text() const { return Utf8(field->GetTextContent()); }
    void SetText(const char* utf8) {
        field->SetTextContent(TStringRef::Create(utf8, kBCStringEncodingUTF8));
    }
    void Select(int16_t start, int16_t end) {
        ControlEditTextSelectionRec selection{start, end};
        field->SelectTextContent(selection);
    }
    static int Beeps() { return basalt::headless::HeadlessDriver::BeepCount(); }

    WindowRef window = nullptr;
    RecordingObserver observer;
    std::unique_ptr<KelBaseDialog> dialog;
    std::unique_ptr<TTextEdit> field;
};

} // namespace keltest
