// Small charts and what becomes of them: the five rules, and each construct of the language.
#include <gtest/gtest.h>

#include "tests/bibliocpp/grafcet_file/traces.h"
#include "tests/support/count_allocations.h"

namespace {

struct example {
  const char *what, *charts, *trace;
};

// A step that needs nothing said about it.
#define REST "grafcet G etape initiale 0 "

constexpr example examples[] = {
    // --- The five rules ---
    {"rule 1: the initial situation holds before anything happens",
     REST ": A etape initiale 1 : B etape 2 transition 1 -> 2 : a",
     "0 | 0 1 | A B\n5 | 0 1 | A B\n9 a | 0 2 | A\n"},
    {"rule 2: a transition clears when it is enabled and its receptivity true, not before",
     REST "transition 0 -> 1 : a etape 1 transition 1 -> 2 : b etape 2",
     "0 b | 0 |\n1 | 0 |\n2 a | 1 |\n3 | 1 |\n4 b | 2 |\n"},
    {"rule 3: all steps before are left and all behind entered, at once",
     REST "transition 0 -> 1, 2 : a etape 1 etape 2 transition 1 -> 3 : b etape 3 transition 2, 3 -> 0 : c",
     "0 a | 1 2 |\n1 c | 1 2 |\n2 b | 2 3 |\n3 b c | 0 |\n"},
    {"rule 4: what can clear together does, in one GRAFCET and in two",
     REST "etape initiale 1 transition 0 -> 1 : a etape 3 transition 1 -> 3 : a "
          "grafcet H etape initiale 7 transition 7 -> 8 : a etape 8",
     "0 | G.X0 G.X1 H.X7 |\n1 a | G.X3 H.X8 |\n"},
    {"rule 5: what is activated and deactivated at once stays active, and is not entered anew",
     "variable n = 0 " REST
     "transition 0 -> 1 : a etape initiale 1 : n := n + 1 sur activation ; n := 50 sur désactivation "
     "transition 1 -> 2 : a et X0 etape 2",
     "0 | 0 1 | n\n1 a | 1 2 | n\n"},

    // --- A batch ---
    {"an event belongs to the first evolution of its batch",
     REST "transition 0 -> 1 : fm a etape 1 transition 1 -> 2 : fm a etape 2",
     "0 | 0 |\n1 a | 1 |\n2 a | 1 |\n3 | 1 |\n4 a | 2 |\n"},
    {"what is 1 at the start has not risen", REST "transition 0 -> 1 : fm a etape 1",
     "0 a | 0 |\n1 | 0 |\n2 a | 1 |\n"},
    {"edges of both kinds, of expressions too",
     REST "transition 0 -> 1 : ↑(a . b) etape 1 transition 1 -> 0 : fd (a ou b)",
     "0 a | 0 |\n1 a b | 1 |\n2 b | 1 |\n3 | 0 |\n"},
    {"what an edge keeps closed opens once it is over, in the same batch",
     REST "transition 0 -> 1 : a . non fm a etape 1", "0 | 0 |\n1 a | 1 |\n"},
    {"the edge of a step is seen in the evolution after",
     REST "transition 0 -> 1 : a etape 1 grafcet H etape initiale 7 transition 7 -> 8 : fm G.X1 etape 8",
     "0 | G.X0 H.X7 |\n1 a | G.X1 H.X8 |\n"},
    {"a step that is passed through acts by its stored actions only",
     "variable n = 0 " REST
     "transition 0 -> 1 : a etape 1 : A ; n := n + 1 sur activation ; B := 1 sur désactivation "
     "transition 1 -> 2 : 1 etape 2 : C",
     "0 | 0 |\n1 a | 2 | B C n\n"},
    {"a situation that never becomes stable leaves the outputs alone and goes on with the next batch",
     REST ": A transition 0 -> 1 : a etape 1 transition 1 -> 2 : a etape 2 transition 2 -> 1 : a "
          "transition 1 -> 3 : non a etape 3 : B",
     "0 | 0 | A\n1 a | 2 | A | instable 1 2\n2 a | 2 | A | instable 1 2\n3 | 2 |\n"},
    {"counting without end is no stable situation either",
     "variable n = 0 " REST "etape initiale 1 : n := n + 1 sur fm X0 ou fd X0 "
     "transition 0 -> 2 : a etape 2 transition 2 -> 0 : a",
     "0 | 0 1 |\n1 a | 0 1 | n=999 | instable 0 2\n"},

    // --- Structures ---
    {"a selection whose ways exclude each other, and its convergence",
     REST "transition 0 -> 1 : a etape 1 transition 0 -> 2 : b . non a etape 2 "
          "transition 1 -> 3 : c transition 2 -> 3 : d etape 3",
     "0 b | 2 |\n1 c | 2 |\n2 d | 3 |\n"},
    {"two open ways of a selection are both taken",
     REST "transition 0 -> 1 : a etape 1 transition 0 -> 2 : b etape 2", "0 a b | 1 2 |\n"},
    {"a source gives, a sink takes", "grafcet G transition source -> 1 : a etape 1 transition 1 -> puits : b",
     "0 | |\n1 a | 1 |\n2 | 1 |\n3 b | |\n4 | |\n5 a | 1 |\n"},
    {"a step may follow itself", REST ": A transition 0 -> 0 : 1", "0 | 0 | A\n"},

    // --- Actions ---
    {"conditional, delayed and limited actions",
     REST ": A si a ou b ; B apres 10ms ; C pendant 10ms ; D si a pendant 5ms",
     "0 b | 0 | A C\n4 a | 0 | A C D\n5 a | 0 | A C\n9 | 0 | C\n10 a | 0 | A B\n"},
    {"stored outputs keep their value; what is assigned was computed before the evolution",
     "variable n = 2 variable m = 0 " REST ": n := n * 3 sur désactivation ; m := n - 10 sur désactivation "
     "transition 0 -> 1 : a etape 1 : V := 5 sur activation transition 1 -> 2 : b etape 2 : V := 0 sur "
     "activation",
     "0 | 0 | n=2\n1 a | 1 | V=5 n=6 m=-8\n2 | 1 | V=5 n=6 m=-8\n3 b | 2 | n=6 m=-8\n"},
    {"an action on an event is done when the step was active before it",
     "variable n = 0 " REST
     "transition 0 -> 1 : a etape 1 : n := n + 1 sur fm a ou fm b transition 1 -> 0 : b",
     "0 | 0 |\n1 a | 1 |\n2 | 1 |\n3 a | 1 | n\n4 b | 0 | n=2\n5 | 0 | n=2\n6 b | 0 | n=2\n"},

    // --- Numbers and time ---
    {"comparisons of inputs, variables and numbers",
     "variable n = 3 " REST
     ": A si [p + 2 * n >= 10] ; B si [p <> -4] ; C si non [n = 3] ou [(p - 1) * 2 < n]",
     "0 p=4 | 0 | A B n=3\n1 p=-4 | 0 | C n=3\n2 p=2 | 0 | B C n=3\n"},
    {"t1/a: not before it has lasted t1", REST "transition 0 -> 1 : 10ms/a etape 1",
     "0 a | 0 |\n9 a | 0 |\n10 | 0 |\n11 a | 0 |\n20 a | 0 |\n21 a | 1 |\n"},
    {"t1/a/t2: for t2 longer than a, and not at all when a has been too short", REST ": A si 10ms/a/5ms",
     "0 a | 0 |\n5 | 0 |\n6 a | 0 |\n16 a | 0 | A\n17 | 0 | A\n21 | 0 | A\n22 | 0 |\n"},
    {"t/X: time counts from the step's activation, also when it stays active by rule 5",
     "variable d = 20ms " REST "transition 0 -> 0 : fm a transition 0 -> 1 : d/X0 etape 1 : A si 0s/X1",
     "7 | 0 | d=20000\n20 a | 0 | d=20000\n26 | 0 | d=20000\n27 | 1 | A d=20000\n"},

    // --- Forcing ---
    {"a forced GRAFCET takes the situation at once and stays in it",
     REST "transition 0 -> 1 : a etape 1 : F/H{8} transition 1 -> 0 : non a "
          "grafcet H etape initiale 7 : A transition 7 -> 8 : b etape 8 : B transition 8 -> 7 : b",
     "0 | G.X0 H.X7 | A\n1 a | G.X1 H.X8 | B\n2 a b | G.X1 H.X8 | B\n3 b | G.X0 H.X7 | B | instable H.X7 "
     "H.X8\n"},
    {"{*} holds it where it is, {} empties it, {INIT} begins anew",
     REST "transition 0 -> 1 : a . [n = 0] etape 1 : F/H{*} transition 0 -> 2 : a . [n = 1] etape 2 : F/H{} "
          "transition 0 -> 3 : a . [n = 2] etape 3 : F/H{INIT} "
          "transition 1 -> 0 : non a transition 2 -> 0 : non a transition 3 -> 0 : non a "
          "grafcet H etape initiale 7 : A transition 7 -> 8 : fm b etape 8 : B transition 8 -> 7 : fm b",
     "0 | G.X0 H.X7 | A\n1 b | G.X0 H.X8 | B\n2 a | G.X1 H.X8 | B\n3 a b | G.X1 H.X8 | B\n4 | G.X0 H.X8 | B\n"
     "5 a n=1 | G.X2 |\n6 b | G.X0 |\n7 a n=2 | G.X3 H.X7 | A\n"},
    {"who is forced does not force: the highest is heard first",
     "grafcet K etape initiale 7 : A etape 8 : B "
     "grafcet H etape initiale 4 etape 5 : F/K{8} transition 4 -> 5 : a "
     "grafcet G etape initiale 0 transition 0 -> 1 : a etape 1 : F/H{4}",
     "0 | K.X7 H.X4 G.X0 | A\n1 a | K.X7 H.X4 G.X1 | A\n"},
    {"a step that is forced is entered: what is stored on activation is done",
     "variable n = 0 " REST "transition 0 -> 1 : a etape 1 : F/H{8} "
     "grafcet H etape initiale 7 etape 8 : n := n + 1 sur activation transition 7 -> 8 : b",
     "0 | G.X0 H.X7 |\n1 a | G.X1 H.X8 | n\n2 a | G.X1 H.X8 | n\n"},

    // --- Macro-steps and enclosing steps ---
    {"a macro-step is entered at E, left at S, and active all the while",
     REST "transition 0 -> M1 : a macro M1 transition M1 -> 0 : b "
          "expansion M1 etape E1 : A transition E1 -> S1 : c etape S1 : B "
          "grafcet H etape initiale 7 : C si G.XM1",
     "0 a | G.XM1 G.XE1 H.X7 | A C\n1 b | G.XM1 G.XE1 H.X7 | A C\n2 c | G.XM1 G.XS1 H.X7 | B C\n3 b | G.X0 "
     "H.X7 |\n"},
    {"an enclosing step opens its encapsulations at their links and closes them wherever they are",
     REST "transition 0 -> 1 : a etape encapsulante 1 : A transition 1 -> 0 : b "
          "encapsulation 1 etape * 10 : B transition 10 -> 11 : c etape 11 : C "
          "encapsulation 1 etape * 20 transition 20 -> 21 : c etape englobante 21 transition 21 -> 20 : d "
          "encapsulation 21 etape * 30 : D",
     "0 a | 1 10 20 | A B\n1 c | 1 11 21 30 | A C D\n2 d | 1 11 20 | A C\n3 c | 1 11 21 30 | A C D\n4 b c | "
     "0 |\n"
     "5 a | 1 10 20 | A B\n"},
    {"an enclosing step that is left empties the macro-steps in it",
     REST "transition 0 -> 1 : a etape englobante 1 transition 1 -> 0 : b encapsulation 1 etape * 10 "
          "transition 10 -> M1 : 1 macro M1 expansion M1 etape E1 : A transition E1 -> S1 : c etape S1",
     "0 a | 1 M1 E1 | A\n1 b | 0 |\n"},
    {"an initial enclosing step begins at the initial steps in it, a forced one too",
     "grafcet F1 etape initiale 0 : F/G{1} transition 0 -> 2 : a etape 2 : F/G{INIT} "
     "grafcet G etape initiale englobante 1 encapsulation 1 etape * 10 etape initiale 11 transition 10 -> 11 "
     ": b",
     "0 | F1.X0 G.X1 G.X10 |\n1 a | F1.X2 G.X1 G.X11 |\n"},
    {"a source in an encapsulation gives only while that is open",
     REST "transition 0 -> 1 : a etape englobante 1 encapsulation 1 etape * 10 transition source -> 11 : c "
          "etape 11",
     "0 c | 0 |\n1 a | 1 10 |\n2 c | 1 10 11 |\n"},
};

}  // namespace

TEST(evolution, does_what_the_standard_says) {
  for (const example& e : examples)
    EXPECT_EQ(traced(e.charts, e.trace), e.trace) << e.what << "\n" << e.charts;
}

TEST(evolution, reads_english_as_it_reads_french) {
  const char* const trace = "0 | 0 |\n1 a | 1 | A\n31 a | 0 | n\n";
  EXPECT_EQ(
      traced("variable n = 0 soit lasts = 20ms/X1 ou c\ngrafcet G \"chart\" étape initiale 0 \"rest\"\n"
             "transition 0 -> 1 : fm a et non b\nétape 1 : A si a après 0s ; n := n + 1 sur désactivation\n"
             "transition 1 -> 0 : lasts et a",
             trace),
      trace);
  EXPECT_EQ(
      traced("variable n = 0 let lasts = 20ms/X1 or c\ngrafcet G initial step 0 \"rest\"\n"
             "transition 0 -> 1 : rise a and not b\nstep 1 : A if a after 0s ; n := n + 1 on deactivation\n"
             "transition 1 -> 0 : lasts and a",
             trace),
      trace);
}

TEST(evolution, goes_step_by_step_to_the_same_end) {
  const auto read =
      grafcet_file::read_charts(REST "transition 0 -> 1 : a etape 1 : A transition 1 -> 2 : a etape 2 : B");
  grafcet_file::evolution charts(read.charts);
  charts.begin(std::vector<std::int32_t>{1}, 0);
  for (const char* const active : {"010", "001"}) {
    EXPECT_TRUE(charts.evolve());
    std::string now;
    for (const auto s : charts.now().active) now += s != 0 ? '1' : '0';
    EXPECT_EQ(now, active);
    EXPECT_EQ(charts.now().outputs, (std::vector<std::int32_t>{0, 0}));
  }
  EXPECT_FALSE(charts.evolve());
  EXPECT_EQ(charts.now().outputs, (std::vector<std::int32_t>{0, 1}));
}

TEST(evolution, allocates_nothing) {
  for (const example& e : examples) {
    const auto read = grafcet_file::read_charts(e.charts);
    grafcet_file::evolution charts(read.charts);
    std::vector<std::int32_t> inputs(read.charts.inputs.size());
    const long before = allocations();
    for (int n = 0; n < 20; ++n) {
      for (auto& input : inputs) input = n / 2 % 2;
      charts.batch(inputs, n * 4'000);
    }
    EXPECT_EQ(allocations(), before) << e.what;
  }
}
