// banc_essai [--signaux FILE] [--pas-a-pas] <controleur>: a test bench. Plays the plant with no plant: the
// controller's inputs are set by hand, its outputs are shown as lamps.
//
// A batch of inputs is announced every 10 ms, as the mine does; with --pas-a-pas only when the operator
// releases one.

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <string_view>
#include <vector>

#include "bibliocpp/language.h"
#include "maquettes_graphiques/WAGONS/mine_signals.h"
#include "maquettes_graphiques/mock_up/run_end.h"
#include "maquettes_graphiques/mock_up/start_up.h"
#include "outils/answers/answers.h"
#include "outils/banc_essai/signal_file.h"
#include "outils/hand_panel/hand_panel.h"

namespace {

signal_names signals_of_mine() {
  auto* const first_output = std::begin(table_signaux) + entree::count;
  return {{std::begin(table_signaux), first_output}, {first_output, std::end(table_signaux)}};
}

struct options {
  signal_names names = signals_of_mine();
  bool step_by_step = false;
  String command;
};

[[noreturn]] void tell_usage() {
  answer_help(
      tr("usage : banc_essai [--signaux FICHIER] [--pas-a-pas] COMMANDE...\n"
         "Joue la maquette, sans maquette : les entrées du contrôleur se posent à la main.\n"
         "  --signaux FICHIER  d'autres signaux que ceux de la mine, un par ligne :\n"
         "                     entree NOM ou sortie NOM\n"
         "  --pas-a-pas        n'annonce les entrées qu'au bouton GO\n"));
}

options read_options(int argc, char** argv) {
  options chosen;
  int n = 1;
  for (; n < argc && std::string_view(argv[n]).starts_with("--"); ++n) {
    const std::string_view option = argv[n];
    if (option == "--pas-a-pas")
      chosen.step_by_step = true;
    else if (option == "--signaux" && n + 1 < argc)
      chosen.names = read_signals(argv[++n]);
    else if (option == "--help")
      tell_usage();
    else if (option == "--version")
      answer_version();
    else
      break;
  }
  if (n == argc || std::string_view(argv[n]).starts_with("--")) {
    std::cerr << tr("ERREUR de parametre:\n banc_essai [--signaux FICHIER] [--pas-a-pas] <controleur>\n\n");
    std::exit(2);
  }
  chosen.command = joined_arguments(argc - n + 1, argv + n - 1);
  return chosen;
}

std::vector<int> read_outputs(IOsharemem_server& area, std::size_t count) {
  std::vector<int> values;
  for (std::size_t k = 0; k < count; ++k) values.push_back(area.output_value(static_cast<int>(k)));
  return values;
}

// Until the controller has written or announced something, its outputs are not known.
bool has_spoken(IOsharemem_server& area, const std::vector<int>& outputs) {
  return area.get_outputs_clock() > 0 ||
         std::any_of(outputs.begin(), outputs.end(), [](int v) { return v != 0; });
}

}  // namespace

int main(int argc, char** argv) {
  options chosen = read_options(argc, argv);
  watch_for_run_end();
  IOsharemem_server& area = *share_with_controller(chosen.names.inputs, chosen.names.outputs, chosen.command);
  end_exchange_at_exit(area);

  hand_panel panel("banc d'essai", chosen.names.inputs, tr("Sorties"), chosen.names.outputs);
  const auto release = [&area](const std::vector<int>& values) {
    for (std::size_t i = 0; i < values.size(); ++i) area.setreset_input(static_cast<int>(i), values[i]);
    area.inputs_go();
  };
  const auto watch = [&] {
    if (!chosen.step_by_step) area.inputs_go();
    const std::vector<int> outputs = read_outputs(area, chosen.names.outputs.size());
    if (has_spoken(area, outputs)) panel.light(outputs);
    return true;
  };
  panel.run(release, watch);
  return 0;
}
