#pragma once
// Where new widgets go, for a while.

#include <FL/Fl_Group.H>

// As long as this lives, new widgets become children of `group`, or of none when it is null; then those
// of whoever was building before do again. A window made while another is being built would otherwise
// become part of it.
class current_group {
 public:
  explicit current_group(Fl_Group* group) { Fl_Group::current(group); }
  ~current_group() { Fl_Group::current(before); }
  current_group(const current_group&) = delete;
  current_group& operator=(const current_group&) = delete;

 private:
  Fl_Group* const before = Fl_Group::current();
};
