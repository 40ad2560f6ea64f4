#pragma once
// What every mock-up does first: create the area its signals live in and start its controller.

#include <list>
#include <string>

#include "bibliocpp/IOshare.h"

// The arguments after the program's name, each followed by one blank; empty when there are none.
// Nothing is quoted: the shell that will run the text sees the operator's own words.
std::string joined_arguments(int argc, char** argv);

// Creates the area for these signals (see IOsharemem_server for what ends the process), then starts
// `command` in the background through the shell: the command, " -automemlink ", the area's
// identifier in decimal, " &". Whether it runs is not looked at: a plant without a controller is a
// plant at rest. The server is the caller's, made with new.
IOsharemem_server* share_with_controller(std::list<std::string>& inputs, std::list<std::string>& outputs,
                                         const std::string& command);
