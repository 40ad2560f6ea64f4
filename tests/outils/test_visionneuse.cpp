#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
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
  process p(command, {"DISPLAY=:none", "LC_ALL=en"});
  const int status = p.wait();
  return {status, p.output(), p.errors()};
}

words with(words arguments) {
  arguments.insert(arguments.begin(), built("visionneuse"));
  return arguments;
}
result visionneuse(const words& arguments) { return run(with(arguments)); }

// Run by the shell, which sets limits or redirects first.
result limited(const string& so, words arguments) {
  arguments = with(arguments);
  arguments.insert(arguments.begin(), {"sh", "-c", so});
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
  const string mark = "\xef\xbb\xbf";
  std::ofstream("dos") << mark << "#P 30 \r\n" << mark << "déchargement €\r\n\r\nlast";
  EXPECT_EQ(limited("echo first; \"$0\" \"$@\"; echo last", {"--texte", "/dev/stdout", "dos"}).output,
            "first\n" + rule + "\n" + mark + "déchargement €\n\nlast\nlast\n");
}

TEST(visionneuse_program, says_in_one_line_what_is_wrong) {
  const string help = "; \"visionneuse --help\" tells the usage";
  const std::vector<std::tuple<words, int, string>> wrong{
      {{"none"}, 2, "cannot read none: No such file or directory"},
      {{"/tmp"}, 2, "cannot read /tmp: Is a directory"},
      {{}, 2, "no file to show is given" + help},
      {{sample, "b"}, 2, "one file at a time: \"b\" is one too many" + help},
      {{sample, "-x"}, 2, "there is no option -x" + help},
      {{sample, "-é", "--ps", "-"}, 2, "there is no option -é" + help},
      {{"--help=x", sample}, 2, "there is no option --help=x" + help},
      {{"--", "-none"}, 2, "cannot read -none: No such file or directory"},
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

TEST(visionneuse_program, leaves_nothing_behind_when_an_export_ends_early) {
  const a_directory here;
  std::ofstream("old.pdf") << "old";
  std::ofstream("many") << string(8'000'000, '#');
  for (const string out : {"old.pdf", "new.pdf"}) {
    const result full = limited("trap '' XFSZ; ulimit -f 40; exec \"$0\" \"$@\"", {sample, "--pdf", out});
    EXPECT_EQ(full.errors, "visionneuse: cannot write " + out + ": File too large\n");
#ifndef __SANITIZE_ADDRESS__  // which ends a program without memory itself
    const result poor = limited("ulimit -v 80000; exec \"$0\" \"$@\"", {"many", "--pdf", out});
    EXPECT_EQ(poor.status, 1);
    EXPECT_EQ(poor.errors, "visionneuse: there is not enough memory for this\n");
#endif
    process ended(with({"many", "--pdf", out}));
    const string progress = "/proc/" + std::to_string(ended.pid()) + "/io";
    EXPECT_TRUE(wait_until(
        [&] { return contents(progress).find("syscw: ") + 9 < contents(progress).find("read_bytes") - 4; }));
    ended.signal(SIGTERM);
    EXPECT_EQ(ended.wait(), -SIGTERM);
  }
  EXPECT_EQ(contents("old.pdf"), "old");
  EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 2);
  EXPECT_EQ(limited("exec \"$0\" --help >/dev/full", {}).status, 1);
}

TEST(visionneuse_program, gives_an_existing_file_new_contents_and_leaves_it_what_it_is) {
  const a_directory here;
  fs::create_directory("locked");
  const string long_name(250, 'n');
  for (const string& old : {string("old"), long_name, string("locked/old")})
    std::ofstream(old) << string(100'000, 'x');
  fs::permissions("old", fs::perms::owner_read | fs::perms::owner_write);
  fs::permissions("locked", fs::perms::owner_read | fs::perms::owner_exec);
  fs::create_hard_link("old", "twin");
  fs::create_symlink("old", "link");
  fs::create_symlink("new", "dangling");
  const string wanted = visionneuse({sample, "--texte", "/dev/stdout"}).output;
  // Root's right to write anywhere is given up.
  const string so = geteuid() == 0 ? "exec setpriv --inh-caps=-all --bounding-set=-all \"$0\" \"$@\""
                                   : "exec \"$0\" \"$@\"";
  const std::pair<string, string> rows[] = {
      {"link", "twin"}, {"dangling", "new"}, {long_name, long_name}, {"locked/old", "locked/old"}};
  for (const auto& [out, seen] : rows) {
    EXPECT_EQ(limited(so, {sample, "--texte", out}).errors, "");
    EXPECT_EQ(contents(seen), wanted) << seen;
  }
  EXPECT_EQ(fs::status("old").permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_TRUE(fs::is_symlink("link") && fs::is_symlink("dangling"));
  fs::permissions("locked", fs::perms::owner_all);
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
    EXPECT_TRUE(wait_until([] { return fs::exists("seen.pdf"); }));
    EXPECT_EQ(visionneuse({file, "--pdf", "whole.pdf"}).status, 0);
    EXPECT_EQ(contents("seen.pdf"), contents("whole.pdf"));
    fs::remove("seen.pdf");
    hands::close(window);
    EXPECT_EQ(viewer.wait(), 0);
  }
}
