# Every program that is installed, each with its pages in packaging/man and packaging/man/fr: a new one is a word here.
# These answer --help and --version, and a shell completes their options.
set(WAGONS_PROGRAMS
  atelier banc_essai chronogramme examen grafcet nettoyer_zones passerelle_modbus signal_journal surveillant visionneuse)
# The arguments of these are the controller's command, or what a plant gives.
set(WAGONS_PLANTS wagons galerie trieuse)
set(WAGONS_CONTROLLERS controleur_mine controleur_galerie controleur_trieuse commande_manuelle)
