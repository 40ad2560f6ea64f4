#pragma once
// Boxes for programs of strangers, made by bubblewrap: namespaces of their own, and the file system as it is,
// but not to be written to. Each function gives the words that stand before a program's own; none where
// nothing is to be boxed in.

#include <string>
#include <vector>

class sandbox {
 public:
  // `needed` are absolute paths that are to be seen in the boxes even where they lie in /tmp, of which a box
  // has its own.
  explicit sandbox(const std::vector<std::string>& needed);

  // For an exam with all its processes: areas, displays and processes of its own, no network; the folder
  // `evidence`, if there is one, can be written to. It ends, with all in it, when its parent ends.
  std::vector<std::string> for_exam(const std::string& evidence) const;

  // For a controller, within an exam's box: it sees no processes but its own, and works in an empty /tmp of
  // `mib` MiB. Its first process is the program itself.
  static constexpr int mib = 64;
  std::vector<std::string> for_controller() const;

  // Whether this machine lets us have both, tried with the program `self --version`.
  bool works(const std::string& self) const;

 private:
  std::vector<std::string> shown;  // the words that show what is needed
};
