#pragma once

#include <cstddef>
#include <vector>

namespace tavoline {

/// What a column of a grid asks for, in pixels.
struct ColumnWish {
  int wanted;    ///< Shows its title on one line and its texts whole.
  int whole;     ///< Shows its texts whole under a title of two lines.
  int least;     ///< Shows a title of two lines, figures whole and the beginnings of texts.
  int bare = 0;  ///< Shows figures in smaller letters; below that nothing could be read.
};

/// The widths of the columns in `room` pixels. What is left over goes to the column `rest`. Where there is
/// too little, the widest columns give way first: first their titles are broken, then their texts are cut,
/// then figures are drawn smaller, none below its bare width. They may then still be too wide together.
std::vector<int> fitColumns(const std::vector<ColumnWish>& wishes, std::size_t rest, int room);

/// Where texts go on below: a column that is too narrow for them on one line needs no more than its least,
/// and leaves what it has above that to the column `rest`.
void narrowBroken(std::vector<int>& widths, const std::vector<ColumnWish>& wishes, std::size_t rest);

}  // namespace tavoline
