#include "lists/KeyTable.h"

#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <random>
#include <string>

#include "platform/Text.h"
#include "support/Rounds.h"
#include "support/Seed.h"

namespace larder {
namespace {

VirtualListItem Keyed(const std::string& key) {
    VirtualListItem item;
    item.Key = key;
    return item;
}

TEST(KeyTable, AnEmptyTableFindsNothing) {
    KeyTable table;
    EXPECT_EQ(table.Find("k1"), nullptr);
    EXPECT_EQ(table.Find(""), nullptr);
    const VirtualListItem item = Keyed("k1");
    table.Erase(item);
    EXPECT_EQ(table.Find("k1"), nullptr);
}

TEST(KeyTable, KeysAreComparedWithoutRegardToCaseAndOuterBlanks) {
    KeyTable table;
    VirtualListItem item = Keyed("  \xC9toile \x8A ");
    ASSERT_TRUE(table.Insert(item));
    EXPECT_EQ(table.Find("\xE9TOILE \x9A"), &item);
    EXPECT_EQ(table.Find("Etoile \x8A"), nullptr);
    VirtualListItem same = Keyed("\xE9toile \x9A");
    EXPECT_FALSE(table.Insert(same));
    EXPECT_EQ(table.Find(item.Key), &item);
}

TEST(KeyTable, AnItemThatOnlyHasTheKeyOfAnotherIsNotErased) {
    KeyTable table;
    VirtualListItem item = Keyed("k1");
    const VirtualListItem other = Keyed("K1");
    table.Insert(item);
    table.Erase(other);
    EXPECT_EQ(table.Find("k1"), &item);
}

TEST(KeyTable, AClearedTableIsEmptyAndTakesTheSameKeys) {
    KeyTable table;
    VirtualListItem item = Keyed("k1");
    table.Insert(item);
    table.Clear();
    EXPECT_EQ(table.Find("k1"), nullptr);
    EXPECT_TRUE(table.Insert(item));
}

// Keys out of a small set, so that they meet, are erased and come again.
TEST(KeyTable, RandomOperationsAgreeWithAMap) {
    std::mt19937 random(test::Seed());
    KeyTable table;
    std::deque<VirtualListItem> items;
    std::map<std::string, VirtualListItem*> model;
    for (int step = 0; step < test::Rounds(20000); ++step) {
        const std::string key = "k" + std::to_string(random() % 700);
        const auto known = model.find(key);
        if (random() % 5 < 3) {
            VirtualListItem& item = items.emplace_back(Keyed(key));
            ASSERT_EQ(table.Insert(item), known == model.end());
            model.emplace(key, &item);
        } else if (known != model.end()) {
            table.Erase(*known->second);
            model.erase(known);
        }
        const std::string sought = "K" + std::to_string(random() % 700);
        const auto there = model.find(LowerCase(sought));
        ASSERT_EQ(table.Find(sought), there == model.end() ? nullptr : there->second);
    }
    for (const auto& [key, item] : model)
        ASSERT_EQ(table.Find(key), item) << key;
}

}  // namespace
}  // namespace larder
