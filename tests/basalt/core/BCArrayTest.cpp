#include <basalt/BasaltCore.h>
#include <gtest/gtest.h>

namespace {

BCComparisonResult ByText(const void* a, const void* b, void*) {
    return BCStringCompare(static_cast<BCStringRef>(a), static_cast<BCStringRef>(b), 0);
}

TEST(BCArray, TypeCallbacksRetainUntilRemoved) {
    BCStringRef item = BCStringCreateCopy(kBCAllocatorDefault, BCSTR("item"));
    BCMutableArrayRef array = BCArrayCreateMutable(kBCAllocatorDefault, 0, &kBCTypeArrayCallBacks);
    BCArrayAppendValue(array, item);
    BCArrayInsertValueAtIndex(array, 0, item);
    EXPECT_EQ(BCGetRetainCount(item), 3);
    BCArrayRemoveValueAtIndex(array, 1);
    EXPECT_EQ(BCGetRetainCount(item), 2);
    BCArraySetValueAtIndex(array, 0, BCSTR("other"));
    EXPECT_EQ(BCGetRetainCount(item), 1);
    BCArrayAppendValue(array, item);
    BCArrayRef copy = BCArrayCreateCopy(kBCAllocatorDefault, array);
    EXPECT_EQ(BCGetRetainCount(item), 3);
    BCRelease(array);
    BCRelease(copy);
    EXPECT_EQ(BCGetRetainCount(item), 1);
    BCRelease(item);
}

TEST(BCArray, NullCallbacksKeepRawValuesAndCompareByIdentity) {
    int values[3] = {3, 1, 2};
    const void* pointers[] = {&values[0], &values[1], &values[2]};
    BCArrayRef raw = BCArrayCreate(kBCAllocatorDefault, pointers, 3, nullptr);
    EXPECT_EQ(BCArrayGetCount(raw), 3);
    EXPECT_EQ(BCArrayGetValueAtIndex(raw, 1), &values[1]);
    EXPECT_EQ(BCArrayGetValueAtIndex(raw, 3), nullptr);
    EXPECT_EQ(BCArrayGetFirstIndexOfValue(raw, BCRangeMake(0, 3), &values[2]), 2);
    EXPECT_EQ(BCArrayGetFirstIndexOfValue(raw, BCRangeMake(0, 9), &values[2]), kBCNotFound);
    BCRelease(raw);
}

TEST(BCArray, ContainsUsesEqualityAndSortIsStable) {
    BCStringRef copy = BCStringCreateCopy(kBCAllocatorDefault, BCSTR("b"));
    const void* items[] = {BCSTR("c"), BCSTR("a"), copy, BCSTR("b")};
    BCMutableArrayRef array = BCArrayCreateMutable(kBCAllocatorDefault, 0, &kBCTypeArrayCallBacks);
    for (const void* item : items)
        BCArrayAppendValue(array, item);
    EXPECT_TRUE(BCArrayContainsValue(array, BCRangeMake(0, 4), BCSTR("b")));
    BCArraySortValues(array, BCRangeMake(0, 4), ByText, nullptr);
    EXPECT_EQ(BCArrayGetValueAtIndex(array, 0), BCSTR("a"));
    EXPECT_EQ(BCArrayGetValueAtIndex(array, 1), copy);
    EXPECT_EQ(BCArrayGetValueAtIndex(array, 2), BCSTR("b"));
    BCRelease(array);
    BCRelease(copy);
}

TEST(BCDictionary, KeysAreFoundByValueAndKeepOrder) {
    BCMutableDictionaryRef dictionary = BCDictionaryCreateMutable(kBCAllocatorDefault, 0);
    BCMutableStringRef key = BCStringCreateMutableCopy(kBCAllocatorDefault, 0, BCSTR("zeta"));
    BCDictionarySetValue(dictionary, key, kBCBooleanTrue);
    BCStringAppend(key, BCSTR("-changed")); // the stored key is a copy
    BCDictionarySetValue(dictionary, BCSTR("alpha"), BCSTR("1"));
    BCDictionarySetValue(dictionary, BCSTR("mid"), BCSTR("2"));
    EXPECT_EQ(BCDictionaryGetValue(dictionary, BCSTR("zeta")), kBCBooleanTrue);
    BCDictionaryRemoveValue(dictionary, BCSTR("alpha"));
    BCDictionarySetValue(dictionary, BCSTR("mid"), nullptr); // null removes
    BCDictionarySetValue(dictionary, BCSTR("last"), BCSTR("3"));
    ASSERT_EQ(BCDictionaryGetCount(dictionary), 2);
    const void* keys[2];
    BCDictionaryGetKeysAndValues(dictionary, keys, nullptr);
    EXPECT_TRUE(BCEqual(keys[0], BCSTR("zeta")));
    EXPECT_TRUE(BCEqual(keys[1], BCSTR("last")));
    EXPECT_TRUE(BCDictionaryContainsKey(dictionary, BCSTR("last")));

    BCMutableDictionaryRef copy = BCDictionaryCreateMutableCopy(kBCAllocatorDefault, 0, dictionary);
    EXPECT_TRUE(BCEqual(copy, dictionary));
    BCDictionarySetValue(copy, BCSTR("last"), BCSTR("4"));
    EXPECT_FALSE(BCEqual(copy, dictionary));
    BCRelease(copy);
    BCRelease(dictionary);
    BCRelease(key);
}

TEST(BCDictionary, ReleasesWhatItHeld) {
    BCStringRef value = BCStringCreateCopy(kBCAllocatorDefault, BCSTR("v"));
    const void* keys[] = {BCSTR("k")};
    const void* values[] = {value};
    BCDictionaryRef fixed = BCDictionaryCreate(kBCAllocatorDefault, keys, values, 1);
    EXPECT_EQ(BCGetRetainCount(value), 2);
    // An immutable dictionary ignores edits.
    BCDictionaryRemoveAllValues(reinterpret_cast<BCMutableDictionaryRef>(
        const_cast<void*>(static_cast<const void*>(fixed))));
    EXPECT_EQ(BCDictionaryGetCount(fixed), 1);
    BCRelease(fixed);
    EXPECT_EQ(BCGetRetainCount(value), 1);
    BCRelease(value);
}

} // namespace
