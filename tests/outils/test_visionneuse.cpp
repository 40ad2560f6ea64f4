#include <gtest/gtest.h>

#include <tuple>
#include <utility>
#include <vector>

#include "tests/support/a_directory.h"
#include "tests/support/process.h"
#include "tests/support/screen.h"
#include "tests/support/wait.h"

namespace fs = std::filesystem;
using std::string;
using words = std::vector<string>;

namespace {

struct result {
  int status;
  string output, errors;
};

result run(const words& command) {
  process p(command, {"DISPLAY=:none"});
  const int status = p.wait();
  return {status, p.output(), p.errors()};
}

result visionneuse(words arguments) {
  arguments.insert(arguments.begin(), built("visionneuse"));
  return run(arguments);
}

const string sample = in_repository("doc/message-sample.txt"), rule(55, '-');

}  // namespace

TEST(visionneuse_program, exports_without_a_display_what_other_programs_can_read) {
  const a_directory here;
  const result exported = visionneuse({sample, "--pdf", "a.pdf", "--ps", "a.ps", "--texte", "a.txt"});
  EXPECT_EQ(exported.status, 0) << exported.errors;
  const words on_page[] = {{"remplissage REMPLIR_A", "08:03:40"},
                           {"08:03:44", "venue du wagon", "14 charges"},
                           {"Vitesses pixels par cycle", "C: 3,0"}};
  for (int page = 0; page < 3; ++page) {
    const string n = std::to_string(page + 1);
    const words readers[] = {
        {"pdftotext", "-layout", "-f", n, "-l", n, "a.pdf", "-"},
        {"gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=txtwrite", "-sPageList=" + n, "-o", "-", "a.ps"}};
    for (const words& reader : readers) {
      const string seen = run(reader).output;
      for (const string& text : on_page[page])
        EXPECT_NE(seen.find(text), string::npos) << text << " on page " << n << " of\n" << seen;
    }
  }
  EXPECT_TRUE(contents("a.txt").starts_with(rule + "\n" + rule + "\nheure# wagon#"));
  std::ofstream("dos") << "\xef\xbb\xbf#P 30 \r\nd\u00e9chargement \u20ac\r\n\r\nlast";
  EXPECT_EQ(visionneuse({"--texte", "/dev/stdout", "dos"}).output, rule + "\ndéchargement €\n\nlast\n");
}

TEST(visionneuse_program, says_in_one_line_what_is_wrong) {
  const string help = "; \"visionneuse --help\" tells the usage";
  const std::vector<std::tuple<words, int, string>> wrong{
      {{"none"}, 2, "cannot read none: No such file or directory"},
      {{"/tmp"}, 2, "cannot read /tmp: Is a directory"},
      {{}, 2, "no file to show is given" + help},
      {{sample, "b"}, 2, "one file at a time: \"b\" is one too many" + help},
      {{sample, "-x"}, 2, "there is no option -x" + help},
      {{sample, "--pdf"}, 2, "the option --pdf needs a value" + help},
      {{sample, "--pdf", ""}, 2, "an export needs the name of a file" + help},
      {{sample, "--langue", "de"}, 2, "the language is fr or en, not \"de\"" + help},
      {{sample, "--pdf", "no/folder"}, 1, "cannot write no/folder: No such file or directory"},
      {{sample, "--texte", "/dev/full"}, 1, "cannot write /dev/full: No space left on device"}};
  for (const auto& [arguments, status, line] : wrong) {
    const result seen = visionneuse(arguments);
    EXPECT_EQ(std::pair(seen.status, seen.errors), std::pair(status, "visionneuse: " + line + "\n"));
  }
  EXPECT_EQ(visionneuse({sample}).errors.substr(0, 18), "Can't open display");
}

TEST(visionneuse_program, leaves_no_half_file_when_the_disk_is_full) {
  const a_directory here;
  std::ofstream("old.pdf") << "old";
  for (const string out : {"old.pdf", "new.pdf"}) {
    const string limited = "trap '' XFSZ; ulimit -f 40; exec \"$0\" \"$@\"";
    const result seen = run({"sh", "-c", limited, built("visionneuse"), sample, "--pdf", out});
    EXPECT_EQ(seen.errors, "visionneuse: cannot write " + out + ": File too large\n");
  }
  EXPECT_EQ(contents("old.pdf"), "old");
  EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 1);
}

TEST(visionneuse_program, shows_a_window_until_it_is_closed) {
  const a_directory here;
  std::ofstream("empty") << "";
  std::ofstream("reader") << "#!/bin/sh\nmv \"$1\" seen.pdf\n";
  fs::permissions("reader", fs::perms::owner_all);
  for (const string& file : {sample, string("empty")}) {
    process viewer({built("visionneuse"), file, "--langue", "en", "--lecteur-pdf", "./reader"});
    window_id window = 0;
    ASSERT_TRUE(wait_until([&] { return (window = other_window_than({})) != 0; })) << viewer.errors();
    const place at = place_of(window);
    hands::click(at.x + 510, at.y + 455);  // "pdf file"
    EXPECT_TRUE(wait_until([] { return fs::remove("seen.pdf"); }));
    hands::close(window);
    EXPECT_EQ(viewer.wait(), 0);
  }
}
