// A purchase that is killed between two of its writes.

#include <gtest/gtest.h>

#include "purchasing/Gestures.h"
#include "support/Killing.h"

namespace tavoline {
namespace {

TEST(PurchaseProcessTest, AKilledProgramLeavesExactlyItsEarlierWrites) {
  for (const Purchase& purchase : kPurchases)
    test::killBetweenWrites(
        {purchase.name, purchase.writes, kArrival + purchase.before, purchase.run, "", kContents});
}

}  // namespace
}  // namespace tavoline
