#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tavoline {

class Stage;

/// A picture of the documentation: its file without the ending, and the steps that lead to it from the scene
/// before. Without a file the steps keep their own pictures, of dialogs on their way.
struct Scene {
  std::string file;
  std::function<void(Stage&)> play;
};

/// All scenes in order, on the demo cafeteria, from the start of the program on.
std::vector<Scene> scenes();

}  // namespace tavoline
