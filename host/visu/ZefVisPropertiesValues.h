#pragma once

// Values of visual properties.
class ZefVisPropertiesValues {
 public:
  // 0 show, 1 hide; 2 and 3 are looks of their own that hiding and showing leave alone.
  int GetShowAttr() const { return show_; }
  void SetShowAttr(int iShow) { show_ = iShow; }

 private:
  int show_ = 0;
};
