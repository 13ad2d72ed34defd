#pragma once

class Control;
class Drawing;

// The top of a tree of controls, as the controls know it.
class SceneRoot {
 public:
  virtual ~SceneRoot() = default;
  virtual Drawing& Draws() = 0;
  // A control leaves the tree.
  virtual void Forget(const Control& control) = 0;
};
