#include "toolkit/ToolkitFixture.h"
#include "toolkit/controls/Label.h"
#include "toolkit/controls/Tiles.h"

#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>

namespace tavoline {
namespace {

class TileTest : public ToolkitTest {
 protected:
  TileTest() { flow = screen->add<FlowPanel>("RzFlowPanel1"); }

  ShapeButton* addTile(int number) {
    auto* tile = new ShapeButton;
    tile->setObjectName(QStringLiteral("btn%1").arg(number));
    tile->Caption("T" + std::to_string(number));
    tile->setFixedSize(100, 108);
    flow->add(tile);
    return tile;
  }

  FlowPanel* flow;
};

TEST_F(TileTest, ATileMayRebuildThePanelInItsOwnClick) {
  int rebuilds = 0;
  QPointer<ShapeButton> clicked;
  const std::function<void()> rebuild = [&] {
    ++rebuilds;
    flow->clear();
    for (int i = 0; i < 3; ++i) addTile(i)->OnClick = rebuild;
    EXPECT_EQ(screen->findChildren<ShapeButton*>(QStringLiteral("btn1")).size(),
              1);  // the name is free again
  };
  rebuild();
  open();
  for (int round = 0; round < 3; ++round) {
    clicked = screen->findChild<ShapeButton*>(QStringLiteral("btn1"));
    station.tap(clicked);
    EXPECT_FALSE(clicked);
  }
  EXPECT_EQ(rebuilds, 4);
  flow->tiles<ShapeButton>()[0]->Click();
  EXPECT_EQ(rebuilds, 5);
  station.settle();
  EXPECT_EQ(screen->findChildren<ShapeButton*>().size(), 3);
}

TEST_F(TileTest, ATileOfSeveralPartsIsPressedAnywhereAndFreedWhole) {
  std::string pressed;
  auto* panel = new Panel;
  const QPointer<Panel> freed = panel;
  panel->setObjectName(QStringLiteral("pl0"));
  panel->setFixedSize(140, 130);
  panel->Caption("Thé");
  auto* picture = new ShapeButton(panel);
  picture->setObjectName(QStringLiteral("ig0"));
  picture->setGeometry(0, 0, 140, 100);
  picture->Caption("Thé à la menthe");
  auto* price = new Label(panel);
  price->setGeometry(0, 100, 140, 30);
  panel->OnClick = [&] { pressed += panel->Caption() + ";"; };
  picture->OnClick = [&] {
    pressed += picture->Caption() + ";";
    flow->clear();
  };
  flow->add(panel);
  open();
  station.tap(price);
  station.tap(picture);
  EXPECT_EQ(pressed, "Thé;Thé à la menthe;");
  EXPECT_EQ(screen->findChildren<Panel*>().size(), 0);
  EXPECT_FALSE(freed);
}

TEST_F(TileTest, AFullPanelScrollsAndItsTilesStillTakeTaps) {
  int last = -1;
  for (int i = 0; i < 60; ++i) addTile(i)->OnClick = [&last, i] { last = i; };
  open();
  auto* area = flow->findChild<QScrollArea*>();
  EXPECT_GT(area->verticalScrollBar()->maximum(), 0);
  EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0);
  station.tap("EssaiF.btn1");
  EXPECT_EQ(last, 1);
  area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
  station.tap("EssaiF.btn59");
  EXPECT_EQ(last, 59);
}

TEST_F(TileTest, WhatATileShowsIsItsPictureOrItsCaptionAlone) {
  ShapeButton* tile = addTile(0);
  tile->Caption("Bar & Grill");
  open();
  EXPECT_EQ(tile->property("text").toString(), "Bar & Grill");
  EXPECT_TRUE(tile->shortcut().isEmpty());
  const QImage plain = tile->grab().toImage();
  tile->Picture(std::make_shared<const Bytes>(Bytes{1, 2, 3}));
  EXPECT_EQ(tile->grab().toImage(), plain);
  QPixmap green(99, 108);
  green.fill(QColor(0, 160, 60));
  tile->Picture(green);
  EXPECT_EQ(QColor(tile->grab().toImage().pixel(50, 90)), QColor(0, 160, 60));
}

}  // namespace
}  // namespace tavoline
