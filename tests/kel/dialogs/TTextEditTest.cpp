// The name field as a user typing into it and a client setting it see it.

#include "kel/dialogs/TTextEdit.h"

#include "tests/kel/dialogs/EditFieldWindow.h"

using keltest::EditFieldWindow;

using TTextEditTest = EditFieldWindow;

TEST_F(TTextEditTest, TypedColonsAreRefusedWithABeepAndEveryChangeIsReported) {
    Type("a:b");
    EXPECT_EQ(Text(), "ab");
    EXPECT_EQ(Beeps(), 1);
    ASSERT_FALSE(observer.texts.empty());
    EXPECT_EQ(observer.texts.back(), "ab");

    // Return has no place in a name: refused, the text stays.
    basalt::headless::HeadlessDriver::PressKey(kVK_Return);
    basalt::headless::HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Text(), "ab");
    EXPECT_EQ(Beeps(), 2);

    // A key the observer takes never reaches the field.
    observer.consumed = 'z';
    Type("z");
    EXPECT_EQ(Text(), "ab");

    // A key whose handling closes the field leaves nothing behind to notify.
    observer.texts.clear();
    observer.whenTyped = [this] { field.reset(); };
    Type("q");
    EXPECT_TRUE(observer.texts.empty());
}

TEST_F(TTextEditTest, ClientTextLosesColonsAndSlashesAndWhatPassesTheLimit) {
    SetText("a:b/c");
    EXPECT_EQ(Text(), "a-b-c");
    EXPECT_EQ(observer.texts.back(), "a-b-c");

    field->SetMaxTextLength(3);
    SetText("abcdef");
    EXPECT_EQ(Text(), "abc");
    EXPECT_EQ(field->SetTextContent(TStringRef()), paramErr);
}

TEST_F(TTextEditTest, AtTheLimitASelectionIsReplacedButAnInsertionIsRefused) {
    field->SetMaxTextLength(3);
    SetText("abc");
    Type("d");
    EXPECT_EQ(Text(), "abc");
    EXPECT_EQ(Beeps(), 1);

    Select(1, 2);
    Type("x");
    EXPECT_EQ(Text(), "axc");
}

TEST_F(TTextEditTest, AByteLimitCountsEncodedBytesAndCutsWholeCharacters) {
    field->SetMaxTextLengthIsUnicode(false);
    field->SetMaxTextLength(5);
    // "é" takes two bytes: three of them do not fit in five.
    SetText("\xC3\xA9\xC3\xA9\xC3\xA9");
    EXPECT_EQ(Text(), "\xC3\xA9\xC3\xA9");
    Select(2, 2);
    Type("a");
    EXPECT_EQ(Text(), "\xC3\xA9\xC3\xA9"
                      "a");
    Type("b");
    EXPECT_EQ(Text(), "\xC3\xA9\xC3\xA9"
                      "a");
}

TEST_F(TTextEditTest, ByteLimitsCountWideCharactersWholeAndNeverSplitAPair) {
    field->SetMaxTextLengthIsUnicode(false);
    field->SetMaxTextLength(255);
    std::string wide;
    for (int i = 0; i < 86; ++i) {
        wide += "\xE6\x97\xA5"; // three bytes each: 258 in all
    }
    SetText(wide.c_str());
    EXPECT_EQ(Text(), wide.substr(0, 255)) << "86 wide characters pass a 255-byte limit";

    // A character outside the basic plane is a surrogate pair of four bytes: a cut takes it
    // whole, at a byte limit and at a limit in characters alike.
    field->SetMaxTextLength(6);
    SetText("ab\xF0\x9F\x98\x80");
    EXPECT_EQ(Text(), "ab\xF0\x9F\x98\x80");
    SetText("abc\xF0\x9F\x98\x80");
    EXPECT_EQ(Text(), "abc");
    field->SetMaxTextLengthIsUnicode(true);
    field->SetMaxTextLength(3);
    SetText("ab\xF0\x9F\x98\x80");
    EXPECT_EQ(Text(), "ab");
}

TEST_F(TTextEditTest, ANewLimitIsAppliedAtTheNextChange) {
    SetText("abcdef");
    field->SetMaxTextLength(4);
    EXPECT_EQ(Text(), "abcdef");
    Type("g");
    EXPECT_EQ(Text(), "abcd");
    EXPECT_EQ(observer.texts.back(), "abcd");
}

TEST_F(TTextEditTest, FocusAndSelectionAreSeenFromTheDialog) {
    EXPECT_TRUE(field->HasFocus());
    EXPECT_TRUE(TTextEdit::TextControlHasKeyboardFocus(dialog->GetDialogRef()));
    SetText("name");
    Select(0, 0);
    EXPECT_FALSE(TTextEdit::HasTextSelection(dialog->GetDialogRef()));
    Select(1, 3);
    EXPECT_TRUE(TTextEdit::HasTextSelection(dialog->GetDialogRef()));

    observer.focusChanges.clear();
    ClearKeyboardFocus(window);
    basalt::headless::HeadlessDriver::RunUntilIdle();
    EXPECT_FALSE(field->HasFocus());
    EXPECT_EQ(observer.focusChanges, std::vector<bool>{false});
}

TEST_F(TTextEditTest, ComposedTextIsValidatedOnlyWhenTheCompositionEnds) {
    field->SetMaxTextLength(1);
    const auto compose = [](const std::u16string& text, int32_t fixed) {
        EventRef event = nullptr;
        CreateEvent(nullptr, kEventClassTextInput, kEventTextInputUpdateActiveInputArea, 0, 0,
                    &event);
        SetEventParameter(event, kEventParamTextInputSendText, typeUnicodeText, text.size() * 2,
                          text.data());
        SetEventParameter(event, 0x74736678 /* "tsfx" */, typeSInt32, sizeof fixed, &fixed);
        PostEventToQueue(GetMainEventQueue(), event, kEventPriorityStandard);
        ReleaseEvent(event);
        basalt::headless::HeadlessDriver::RunUntilIdle();
    };
    compose(u"\u306B", 0);
    EXPECT_TRUE(field->IsComposing());
    EXPECT_EQ(Beeps(), 0);

    compose(u"\u65E5\u672C", 2);
    EXPECT_FALSE(field->IsComposing());
    EXPECT_EQ(Text(), "\xE6\x97\xA5");
    EXPECT_EQ(observer.texts.back(), "\xE6\x97\xA5");
    EXPECT_EQ(Beeps(), 1);
}
