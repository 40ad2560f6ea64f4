#pragma once
// The animated objects, all of them.

#include "maquettes_graphiques/objgraphiques/belts.h"
#include "maquettes_graphiques/objgraphiques/handing.h"
#include "maquettes_graphiques/objgraphiques/jacks.h"
#include "maquettes_graphiques/objgraphiques/movepart.h"
#include "maquettes_graphiques/objgraphiques/movepart_manager.h"
#include "maquettes_graphiques/objgraphiques/process_fixtures.h"
#include "maquettes_graphiques/objgraphiques/wagon.h"
