#include "com/catalog/CatalogCheck.h"

#include <gtest/gtest.h>

// The catalog's own tables pass every check when they compile; these tables have one thing wrong each.

namespace
{

constexpr vexEnumDef kEndOfEnum = {VEX_END, nullptr};
constexpr vexAttribDef kEndOfAttribs = {VEX_END, nullptr, 0, 0, nullptr};
constexpr vexGroupDef kEndOfGroups = {VEX_END, nullptr, nullptr, nullptr, 0, 0, 0};

constexpr vexAttribDef kIndex = {1, "Index", VEX_ULONG, 0, nullptr};
constexpr vexAttribDef kName = {2, "Name", VEX_STRING, 32, nullptr};
constexpr vexGroupDef kFirst = {1, "First", nullptr, nullptr, 0, 1, 2};
constexpr vexGroupDef kSecond = {2, "Second", nullptr, nullptr, 0, 1, 4};

// Changed by one thing.
template <class Row, class Change>
constexpr Row changed(Row row, Change change)
{
    change(row);
    return row;
}

template <class Row, size_t N>
bool wellFormed(const Row (&rows)[N])
{
    return isWellFormed(rows);
}

template <class Change>
bool acceptsIndex(Change change)
{
    return wellFormed<vexAttribDef>({changed(kIndex, change), kName, kEndOfAttribs});
}

template <class Change>
bool acceptsEndOfAttribs(Change change)
{
    return wellFormed<vexAttribDef>({kIndex, kName, changed(kEndOfAttribs, change)});
}

template <class Change>
bool acceptsSecondGroup(Change change)
{
    return wellFormed<vexGroupDef>({kFirst, changed(kSecond, change), kEndOfGroups});
}

template <class Change>
bool acceptsEndOfGroups(Change change)
{
    return wellFormed<vexGroupDef>({kFirst, kSecond, changed(kEndOfGroups, change)});
}

constexpr auto nothing = [](auto&) {};

} // namespace

TEST(CatalogCheck, anEnumerationEndsOnceAndHasEveryValueOnce)
{
    EXPECT_TRUE(wellFormed<vexEnumDef>({kEndOfEnum}));
    EXPECT_TRUE(wellFormed<vexEnumDef>({{7, "b"}, {0, "a"}, kEndOfEnum}));
    EXPECT_FALSE(wellFormed<vexEnumDef>({{7, "b"}, {0, "a"}}));
    EXPECT_FALSE(wellFormed<vexEnumDef>({{7, "b"}, {VEX_END, "a"}, kEndOfEnum}));
    EXPECT_FALSE(wellFormed<vexEnumDef>({{7, "b"}, {0, nullptr}, kEndOfEnum}));
    EXPECT_FALSE(wellFormed<vexEnumDef>({{7, "b"}, {0, "a"}, {7, "c"}, kEndOfEnum}));
    EXPECT_FALSE(wellFormed<vexEnumDef>({{7, "b"}, {7, "c"}, kEndOfEnum}));
    EXPECT_FALSE(wellFormed<vexEnumDef>({{7, "b"}, {VEX_END, "end"}}));
}

TEST(CatalogCheck, anAscendingEnumerationIsWellFormedToo)
{
    EXPECT_TRUE(isAscending<3>({{0, "a"}, {7, "b"}, kEndOfEnum}));
    EXPECT_FALSE(isAscending<3>({{7, "b"}, {0, "a"}, kEndOfEnum}));
    EXPECT_FALSE(isAscending<3>({{7, "b"}, {7, "a"}, kEndOfEnum}));
    EXPECT_FALSE(isAscending<3>({{0, "a"}, {7, nullptr}, kEndOfEnum}));
}

TEST(CatalogCheck, anAttributeHasANameATypeAndALengthIfItIsAText)
{
    EXPECT_TRUE(acceptsIndex(nothing));
    EXPECT_FALSE(acceptsIndex([](vexAttribDef& row) { row.id = VEX_END; }));
    EXPECT_FALSE(acceptsIndex([](vexAttribDef& row) { row.name = nullptr; }));
    EXPECT_FALSE(acceptsIndex([](vexAttribDef& row) { row.type = VEX_UCHAR - 1; }));
    EXPECT_FALSE(acceptsIndex([](vexAttribDef& row) { row.type = VEX_DATETIME + 1; }));
    EXPECT_FALSE(acceptsIndex([](vexAttribDef& row) { row.type = VEX_STRING; }));
    EXPECT_FALSE(acceptsIndex([](vexAttribDef& row) { row.maxLength = 1; }));
    EXPECT_TRUE(acceptsIndex([](vexAttribDef& row) { row.type = VEX_UCHAR; }));
    EXPECT_TRUE(acceptsIndex([](vexAttribDef& row) { row.type = VEX_DATETIME; }));
}

TEST(CatalogCheck, anAttributesIdAndNameComeOnce)
{
    EXPECT_FALSE(acceptsIndex([](vexAttribDef& row) { row.id = kName.id; }));
    EXPECT_FALSE(acceptsIndex([](vexAttribDef& row) { row.name = kName.name; }));
}

TEST(CatalogCheck, theEndOfTheAttributesIsEmpty)
{
    static constexpr vexEnumDef kValues[] = {kEndOfEnum};
    EXPECT_TRUE(acceptsEndOfAttribs(nothing));
    EXPECT_FALSE(acceptsEndOfAttribs([](vexAttribDef& row) { row.id = 3; }));
    EXPECT_FALSE(acceptsEndOfAttribs([](vexAttribDef& row) { row.name = "end"; }));
    EXPECT_FALSE(acceptsEndOfAttribs([](vexAttribDef& row) { row.type = VEX_ULONG; }));
    EXPECT_FALSE(acceptsEndOfAttribs([](vexAttribDef& row) { row.maxLength = 1; }));
    EXPECT_FALSE(acceptsEndOfAttribs([](vexAttribDef& row) { row.enums = kValues; }));
}

TEST(CatalogCheck, aKeyIsAnAttribute)
{
    EXPECT_TRUE((areKeysOf<2, 3>({1, 2}, {kIndex, kName, kEndOfAttribs})));
    EXPECT_TRUE((areKeysOf<1, 3>({2}, {kIndex, kName, kEndOfAttribs})));
    EXPECT_FALSE((areKeysOf<1, 3>({3}, {kIndex, kName, kEndOfAttribs})));
    EXPECT_FALSE((areKeysOf<2, 3>({1, 3}, {kIndex, kName, kEndOfAttribs})));
    EXPECT_FALSE((areKeysOf<1, 3>({VEX_END}, {kIndex, kName, kEndOfAttribs})));
}

TEST(CatalogCheck, groupsAscendAndHaveANameAVersionAndAMask)
{
    EXPECT_TRUE(acceptsSecondGroup(nothing));
    EXPECT_FALSE(acceptsSecondGroup([](vexGroupDef& row) { row.id = kFirst.id; }));
    EXPECT_FALSE(acceptsSecondGroup([](vexGroupDef& row) { row.id = VEX_END; }));
    EXPECT_FALSE(acceptsSecondGroup([](vexGroupDef& row) { row.name = nullptr; }));
    EXPECT_FALSE(acceptsSecondGroup([](vexGroupDef& row) { row.name = kFirst.name; }));
    EXPECT_FALSE(acceptsSecondGroup([](vexGroupDef& row) { row.version = 0; }));
    EXPECT_FALSE(acceptsSecondGroup([](vexGroupDef& row) { row.debugMask = 0; }));
}

TEST(CatalogCheck, theEndOfTheGroupsIsEmpty)
{
    static constexpr vexAttribDef kAttribs[] = {kEndOfAttribs};
    static constexpr uint32_t kKeys[] = {1};
    EXPECT_TRUE(acceptsEndOfGroups(nothing));
    EXPECT_FALSE(acceptsEndOfGroups([](vexGroupDef& row) { row.id = 3; }));
    EXPECT_FALSE(acceptsEndOfGroups([](vexGroupDef& row) { row.name = "end"; }));
    EXPECT_FALSE(acceptsEndOfGroups([](vexGroupDef& row) { row.attributes = kAttribs; }));
    EXPECT_FALSE(acceptsEndOfGroups([](vexGroupDef& row) { row.keys = kKeys; }));
    EXPECT_FALSE(acceptsEndOfGroups([](vexGroupDef& row) { row.numKeys = 1; }));
    EXPECT_FALSE(acceptsEndOfGroups([](vexGroupDef& row) { row.version = 1; }));
    EXPECT_FALSE(acceptsEndOfGroups([](vexGroupDef& row) { row.debugMask = 1; }));
}
