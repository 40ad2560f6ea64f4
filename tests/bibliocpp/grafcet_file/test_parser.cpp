// What a wrong text is answered, and that no text at all is answered with a crash.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "tests/bibliocpp/grafcet_file/traces.h"

namespace {

const int in_french = setenv("LC_ALL", "fr_FR.UTF-8", 1);

struct example {
  const char *charts, *told;
};

constexpr example wrong[] = {
    // --- Not to be read ---
    {"grafcet G\netape initiale 0 \"repos\n  transition 0 -> 0 : a § b\n",
     "2:18 \" sans \" qui le ferme sur la même ligne\n3:25 caractère inattendu « § »\n"
     "3:27 attendu : grafcet, étape, transition, macro, expansion, encapsulation, variable ou soit ; trouvé "
     ": « b »\n"},
    {"etape 0", "1:1 d'abord « grafcet » et son nom\n"},
    {"grafcet G etape initiale 0 : A si\ntransition 0 -> 1 : \netape 1 : ; transition 1 -> 0 a\ntransition 1 "
     "0 : a",
     "2:1 attendu : une condition ; trouvé : « transition »\n3:1 attendu : une condition ; trouvé : « etape "
     "»\n"
     "3:11 attendu : une action : une sortie, « C := ... » ou un forçage F/nom{...} ; trouvé : « ; »\n"
     "3:31 attendu : « : » et une réceptivité ; trouvé : « a »\n4:14 attendu : « -> » ; trouvé : « 0 »\n"},
    {"grafcet G transition -> 1 : a\ntransition 0 -> : a\ntransition source -> puits : 1",
     "1:22 attendu : avant « -> » une étape, ou « source » s'il n'y en a pas ; trouvé : « -> »\n"
     "2:17 attendu : après « -> » une étape, ou « puits » s'il n'y en a pas ; trouvé : « : »\n"
     "3:12 une transition a au moins une étape\n"},
    {"grafcet G\ntransition 0 -> 0 : C > 3\ntransition 0 -> 0 : 5/X0\ntransition 0 -> 0 : 5x\ntransition 0 "
     "-> 0 : 2\n"
     "transition 0 -> 0 : [C + 1]\ntransition 0 -> 0 : (a\netape initiale 0",
     "2:23 une comparaison s'écrit entre crochets : [C > 3]\n3:21 une durée a une unité : 5s/..., 5ms/...\n"
     "4:21 ni nombre, ni durée (5s, 500ms, 2min, 1h), ni nom : « 5x »\n"
     "5:21 comme condition, seuls 0 et 1 ; une comparaison s'écrit [C > 3]\n"
     "6:27 attendu : une comparaison (= <> < <= > >=) ; trouvé : « ] »\n8:1 attendu : « ) » ; trouvé : « "
     "etape »\n"},
    {"variable C = 0\ngrafcet G etape initiale 0 : C ; A := 1\netape 1 : A := 1 sur a ; C := 1 sur "
     "activation\n",
     "2:32 C est une variable : « C := ... sur activation »\n"},
    {"soit u = v\nsoit v = a\nvariable v = 1\ngrafcet G etape initiale 0 : A si u",
     "1:10 « v » est défini plus bas : une définition précède son emploi\n3:10 « v » est déjà à la ligne 2\n"
     "4:35 « u » est défini plus bas : une définition précède son emploi\n"},

    // --- Names that lead nowhere ---
    {"grafcet G etape initiale 0\netape 0\ntransition 0 -> 3 : X5\ngrafcet G etape initiale 1 : F/H{0} ; "
     "F/G{7}\n",
     "2:7 l'étape 0 est déjà à la ligne 1\n3:17 aucune étape 3 dans ce grafcet\n3:21 aucune étape 5\n"
     "4:9 un grafcet « G » est déjà à la ligne 1\n4:32 aucun grafcet ne s'appelle « H »\n"
     "4:43 aucune étape 7 dans le grafcet G\n"},
    {"grafcet G etape initiale 0 : A si X3 grafcet H etape initiale 3 grafcet K etape initiale 3",
     "1:35 plusieurs grafcets ont une étape 3 : écrivez H.X3\n"},
    {"grafcet G macro 3\nmacro M4\nmacro M5\nexpansion M5 etape E5\nexpansion M6\netape englobante "
     "8\nencapsulation 0",
     "1:17 une macro-étape s'appelle M et un numéro : M3\n2:7 il manque « expansion M4 » et ses étapes\n"
     "4:11 il manque dans l'expansion l'étape S5\n5:11 aucune macro-étape M6 dans ce grafcet\n"
     "6:18 il manque « encapsulation 8 » et ses étapes\n7:15 aucune étape encapsulante 0 dans ce grafcet\n"},
    {"grafcet G macro M3 transition M3 -> E3 : 1 expansion M3 macro M4 etape E3 etape S3\n"
     "expansion M4 macro M5 etape E4 etape S4 expansion M5 etape E5 etape S5",
     "1:37 l'étape E3 n'est pas de ce dessin : elle est à la ligne 1\n"},

    // --- Charts that cannot work ---
    {"grafcet G etape initiale 0 : A\netape 1 : A\netape 2\ntransition 1 -> 2 : a\ngrafcet H etape 0 : A\n",
     "2:7 l'étape 1 n'est jamais atteinte\n3:7 l'étape 2 n'est jamais atteinte\n"
     "5:9 aucune étape initiale : le grafcet H ne démarre jamais\n"
     "5:21 « A » est déjà commandé par le grafcet G (ligne 1)\n"},
    {"grafcet G etape initiale 0 : A si fm a ; B := 1 sur a ; C ; C := 1 sur activation ; F/H{1}\n"
     "grafcet H etape 1 : F/G{*}\ngrafcet K",
     "1:30 la condition d'une action continue dure : ni fm ni fd\n"
     "1:42 un évènement contient un front : sur fm a, sur fd a\n"
     "1:61 « C » est déjà une action d'une autre sorte (ligne 1) : continue ou mémorisée, pas les deux\n"
     "1:85 le grafcet G se force lui-même, directement ou par un autre\n"
     "2:21 le grafcet H se force lui-même, directement ou par un autre\n3:9 aucune étape dans K\n"},
    {"grafcet G etape initiale * 0 transition 0 -> 1 : a etape englobante 1\nencapsulation 1 etape initiale "
     "2",
     "1:11 * n'a de sens que dans une encapsulation\n"},
    {"grafcet G etape initiale 0 transition 0 -> 1 : a etape englobante 1\nencapsulation 1 etape initiale 2",
     "2:32 l'étape encapsulante 1 n'est pas initiale : 2 ne peut pas l'être\n"},
    {"grafcet G etape initiale 0 : A si A",
     "1:35 « A » est une sortie (ligne 1) : une condition lit des entrées, des "
     "étapes et des variables\n"},

    // --- Selections ---
    {"variable n = 0\ngrafcet G etape initiale 0\ntransition 0 -> 0 : a . b\ntransition 0 -> 0 : b . c\n"
     "transition 0 -> 0 : [n > 3] . non b\ntransition 0 -> 0 : [n = 5] . non b\ntransition 0 -> 0 : [n <= 3] "
     ". non b",
     "4:12 avertissement : peut être franchie en même temps que la transition de la ligne 3 (a = 1, b = 1, c "
     "= 1)\n"
     "6:12 avertissement : peut être franchie en même temps que la transition de la ligne 5 (b = 0, n = "
     "5)\n"},
    {"grafcet G etape initiale 0\ntransition 0 -> 0 : fm a\ntransition 0 -> 0 : fd a\ntransition 0 -> 0 : "
     "non a et non fd a\n"
     "etape initiale 1 transition 1 -> 1 : 2s/X1\ntransition 1 -> 1 : non 1s/X1\ntransition 1 -> 1 : 1s/X1 "
     "et non 2s/X1",
     ""},
    {"grafcet G etape initiale 0 etape initiale 1\ntransition 0, 1 -> 0 : 1\ntransition 0 -> 0 : X1 et 1\n"
     "transition 0 -> 0 : non X0",
     "3:12 avertissement : peut être franchie en même temps que la transition de la ligne 2 (toujours)\n"},
};

std::string read_file(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// What it says about names, for a plant that has these.
std::string told_with_plant(const std::string& charts) {
  const grafcet_file::plant_signals plant{{"wAvide", "wAplein", "dc"}, {"A_GAUCHE", "A_DROITE"}};
  return remarks_of(grafcet_file::read_charts(charts, &plant));
}

}  // namespace

TEST(parser, tells_all_that_is_wrong_and_where) {
  for (const example& e : wrong)
    EXPECT_EQ(remarks_of(grafcet_file::read_charts(e.charts)), e.told) << e.charts;
}

TEST(parser, knows_the_signals_of_the_plant) {
  EXPECT_EQ(told_with_plant(
                "variable dc = 0\ngrafcet G etape initiale 0 : A_GAUCH ; wAvide ; A_DROITE si A_GAUCHE\n"
                "transition 0 -> 0 : waplein\ntransition 0 -> 0 : 'dc' . Xavier"),
            "1:10 « dc » est déjà un signal de la maquette\n"
            "2:30 aucune sortie ne s'appelle « A_GAUCH » ; le nom le plus proche est « A_GAUCHE »\n"
            "2:40 « wAvide » est une entrée : une action commande une sortie ou une variable\n"
            "2:61 « A_GAUCHE » est une sortie : une condition lit des entrées, des étapes et des variables\n"
            "3:21 aucune entrée ne s'appelle « waplein » ; le nom le plus proche est « wAplein »\n"
            "4:28 aucune entrée ne s'appelle « Xavier » ; le nom le plus proche est « wAvide »\n");
  EXPECT_EQ(told_with_plant("grafcet G\r\n\tétape initiale 0 : A_GAUCHE si dc # une remarque\r\n"), "");
}

TEST(parser, tells_a_text_in_another_coding_once) {
  const std::string told =
      remarks_of(grafcet_file::read_charts("grafcet G \xE9tape initiale 0 \"\xE9\xE9\"\n\xE9\n"));
  EXPECT_TRUE(told.starts_with("1:11 le fichier n'est pas en UTF-8 : enregistrez-le ainsi\n")) << told;
  EXPECT_EQ(told.find("UTF-8"), told.rfind("UTF-8")) << told;
}

TEST(parser, keeps_for_the_drawing_what_was_written) {
  const auto read = grafcet_file::read_charts(
      "grafcet G \"tout\"\n  étape initiale 0 \"repos\" : A si  a\n   ou b ; F/H{ 1 }\n"
      "  transition 0 -> 0 : non (a  .b) # encore\n \"suite\"\ngrafcet H etape initiale 1");
  ASSERT_EQ(remarks_of(read), "");
  const auto& p = read.charts;
  EXPECT_EQ(p.charts[0].comment, "tout");
  EXPECT_EQ(p.steps[0].comment, "repos");
  EXPECT_EQ(p.steps[0].actions[0].text, "A si a ou b");
  EXPECT_EQ(p.steps[0].actions[1].text, "F/H{ 1 }");
  EXPECT_EQ(p.transitions[0].text, "non (a .b)");
  EXPECT_EQ(p.transitions[0].comment, "suite");
}

TEST(parser, reads_the_examples_of_the_page) {
  std::string page = read_file(REPOSITORY "/doc/grafcet-files.md");
  int examples = 0;
  for (std::size_t at = 0; (at = page.find("\n```\ngrafcet", at)) != std::string::npos; ++examples) {
    const std::size_t begin = at + 5;
    at = page.find("\n```\n", begin);
    EXPECT_EQ(remarks_of(grafcet_file::read_charts(page.substr(begin, at - begin))), "");
    at += 4;
  }
  EXPECT_EQ(examples, 2);
}

// Random edits of the project's own charts, and soup of the language's words. FUZZ_SECONDS makes it longer.
TEST(parser, survives_any_text) {
  const auto now = std::chrono::steady_clock::now;
  const char* const seconds = std::getenv("FUZZ_SECONDS");
  const auto end = now() + std::chrono::seconds(seconds == nullptr ? 0 : std::atoi(seconds));
  std::vector<std::string> good;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(REPOSITORY))
    if (entry.path().extension() == ".grafcet" && entry.file_size() < 1'500) good.push_back(read_file(entry));
  for (const example& e : wrong) good.emplace_back(e.charts);
  ASSERT_GT(good.size(), std::size(wrong) + 5);
  constexpr const char* soup[] = {"grafcet ",
                                  "G ",
                                  "étape ",
                                  "initiale ",
                                  "encapsulante ",
                                  "0 ",
                                  "1 ",
                                  "M1 ",
                                  "E1 ",
                                  "S1 ",
                                  "macro ",
                                  "expansion ",
                                  "encapsulation ",
                                  "transition ",
                                  "-> ",
                                  ": ",
                                  "; ",
                                  ", ",
                                  "source ",
                                  "puits ",
                                  "a ",
                                  "b ",
                                  "et ",
                                  "ou ",
                                  "non ",
                                  "fm ",
                                  "( ",
                                  ") ",
                                  "[ ",
                                  "] ",
                                  "{ ",
                                  "} ",
                                  "* ",
                                  "/ ",
                                  "F/G",
                                  "X0 ",
                                  "G.X1 ",
                                  ":= ",
                                  "sur ",
                                  "activation ",
                                  "si ",
                                  "après ",
                                  "5ms ",
                                  "99 ",
                                  "= ",
                                  "< ",
                                  "variable ",
                                  "soit ",
                                  "\"c\" ",
                                  "'",
                                  "\n",
                                  "é",
                                  "\xFF",
                                  "- "};
  const unsigned seed = seconds == nullptr ? 1 : std::random_device{}();
  std::cout << "seed " << seed << std::endl;
  std::mt19937 random(seed);
  const auto up_to = [&random](std::size_t n) { return static_cast<std::size_t>(random()) % n; };
  for (const char* const deep : {"(", "non ", "fm ("}) {
    std::string text = "grafcet G etape initiale 0 : A si ";
    for (int n = 0; n < 100'000; ++n) text += deep;
    EXPECT_FALSE(grafcet_file::read_charts(text).ok());
  }
  long texts = 0, runs = 0;
  for (; texts < 2'000 || now() < end; ++texts) {
    std::string text = up_to(4) == 0 ? "grafcet G " : good[up_to(good.size())];
    for (std::size_t edits = up_to(text.size() < 20 ? 40 : 5); edits-- > 0;) {
      const std::size_t at = up_to(text.size() + 1), length = up_to(12);
      const std::string_view piece = soup[up_to(std::size(soup))];
      if (up_to(2) == 0)
        text.insert(text.size() < 60 ? text.size() : at, piece);
      else
        text.replace(at, length, up_to(2) == 0 ? piece : "");
    }
    const auto read = grafcet_file::read_charts(text);
    if (!read.ok()) continue;
    ++runs;
    grafcet_file::evolution charts(read.charts);
    std::vector<std::int32_t> inputs(read.charts.inputs.size());
    for (int n = 0; n < 5; ++n) {
      for (auto& input : inputs) input = static_cast<int>(up_to(3)) - 1;
      charts.batch(inputs, n * 3'000);
    }
  }
  std::cout << texts << " texts, " << runs << " of them charts that run\n";
  EXPECT_GT(runs, texts / 20);
}
