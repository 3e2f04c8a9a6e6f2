#include <gtest/gtest.h>

#include <QMimeData>

#include "support/Shop.h"

using support::caption;
using support::entry;
using support::key;
using support::lineOf;
using support::Shop;
using support::WindowDriver;

TEST(Assignment, ADoubleClickAssignsToTheCurrentKeyAndADropToItsTarget) {
  Shop shop;
  shop.names[7] = u"A name of more than thirty characters";
  WindowDriver user = shop.open();
  user.doubleClickRow("List1", 0);  // no key was clicked: key 0 is current
  EXPECT_EQ(caption(user, key(0)), "A name of more than thirty cha");
  user.click(key(5));
  EXPECT_TRUE(user.drop(key(9), entry(u"Item 40", 40)));
  user.doubleClickRow("List1", 1);  // the drop didn't move the current key
  user.doubleClickRow("List1", 2);  // nor did the first double click: it is replaced
  const auto saved = shop.save(user);
  ASSERT_EQ(saved.size(), 63U);
  EXPECT_EQ(saved[0], "0,7,A name of more than thirty cha,-2147483633,-2147483630");
  EXPECT_EQ(saved[5], "5,10,Item 10,-2147483633,-2147483630");
  EXPECT_EQ(saved[9], "9,40,Item 40,-2147483633,-2147483630");
  for (const int free : {1, 4, 6, 62}) EXPECT_EQ(saved[free], lineOf({.key = free}));
  EXPECT_EQ(shop.failure(), 0);
}

TEST(Assignment, ADroppedTextIsSplitByCharacterPositionsOnly) {
  Shop shop;
  WindowDriver user = shop.open();
  EXPECT_TRUE(user.drop(key(3), u"  Foreign \x20ac " + std::u16string(118, u' ') + u" 0042.4 "));
  QMimeData picture;
  picture.setData("image/png", "no text");
  EXPECT_FALSE(user.drop(key(3), picture, 1));  // no text: nothing happens
  QMimeData copied;
  copied.setText(QString(30, 'x') + QString(100, ' ') + "7");
  EXPECT_TRUE(user.drop(key(4), copied, 1)) << "from a source that offers a copy alone";
  EXPECT_EQ(shop.failure(), 0);
  EXPECT_EQ(shop.save(user)[3], lineOf({.key = 3, .product = "42", .caption = "Foreign \x80"}));
}

TEST(Assignment, AMalformedEntryEndsTheProgramAndLeavesTheKeyUnchanged) {
  struct Case {
    std::u16string text;
    std::int32_t error;
  };
  for (const Case& bad : {Case{u"", 5}, Case{u"too short", 5}, Case{std::u16string(129, u'x'), 5},
                          Case{std::u16string(130, u'x'), 13}, Case{entry(u"Tea", 1) + u"x", 13},
                          Case{entry(u"Tea", 32768), 6}}) {
    Shop shop;
    WindowDriver user = shop.open();
    user.drop(key(3), bad.text);
    EXPECT_EQ(shop.failure(), bad.error);
    EXPECT_EQ(shop.host.endStatus, 1);
    EXPECT_EQ(caption(user, key(3)), "Key 3");
  }
}

TEST(Assignment, ADoubleClickWithNothingSelectedEndsTheProgram) {
  Shop shop;
  shop.slotCount = 3;  // leaves room below the last row
  WindowDriver user = shop.open();
  user.doubleClickRow("List1", 3);
  EXPECT_EQ(shop.failure(), 5);
  EXPECT_EQ(caption(user, key(0)), "Key 0");
}

TEST(Assignment, AnIdBeyondSixteenBitsEndsTheProgram) {
  Shop shop;
  shop.slotCount = 3;
  shop.names[40000] = u"Aardvark";
  WindowDriver user = shop.open();
  user.doubleClickRow("List1", 0);
  EXPECT_EQ(shop.failure(), 6);
}
