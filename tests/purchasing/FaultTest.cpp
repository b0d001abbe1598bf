// What is left of a purchase when one of its writes is refused.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "purchasing/Gestures.h"
#include "support/Session.h"
#include "support/StoreVfs.h"

namespace tavoline {
namespace {

using ::testing::HasSubstr;

/// What the store holds where nothing is refused.
std::string whole(const Purchase& purchase) {
  Session session;
  session.play(kArrival + purchase.before + "\n" + purchase.run);
  return session.at.value(std::string("select ") + kContents);
}

TEST(PurchaseFaultTest, ARefusedWriteEndsTheHandlerThereAndTheRepeatedOneDoesTheRest) {
  for (const Purchase& purchase : kPurchases) {
    const std::string done = whole(purchase);
    for (int n = 1; n <= purchase.writes; ++n) {
      SCOPED_TRACE(std::string(purchase.name) + ", write " + std::to_string(n));
      test::StoreVfs disk;
      Session session;
      const auto contents = [&] { return session.at.value(std::string("select ") + kContents); };
      session.play(kArrival + purchase.before);
      std::string before;
      int writes = 0;
      session.beforeWrite = [&] {
        if (++writes == n) {
          before = contents();
          disk.failWrites(SQLITE_FULL);
        } else if (writes == n + 1) {
          EXPECT_EQ(contents(), before) << "the earlier posts stay, and nothing is added";
          disk.heal();
        }
      };
      const std::string again = n <= purchase.inDialog ? kPay : purchase.again;
      EXPECT_THAT(session.play(purchase.run + "\n" + again), HasSubstr("plein"));
      if (writes == n) {
        EXPECT_EQ(contents(), before) << "the earlier posts stay, and nothing is added";
      }
      if (n >= purchase.repeatable) {
        EXPECT_EQ(contents(), done) << "done, and nothing of it twice";
      }
    }
  }
}

}  // namespace
}  // namespace tavoline
