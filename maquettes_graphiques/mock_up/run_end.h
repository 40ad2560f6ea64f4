#pragma once
// Ends a run in good order when it is ended from outside the window, so that no controller is left
// waiting for a plant that is gone.

class IOsharemem_server;

// From now on SIGTERM, SIGINT and SIGHUP ask for the end of the run: an open modal window closes, and
// run_end_requested() tells it. SIGHUP stays ignored where it was (nohup). SIGPIPE does nothing any more:
// a standard error stream that nobody reads does not end the run. Programs started from here have SIGPIPE
// at its default. Call before the area is created.
void watch_for_run_end();

// Whether a signal, or request_run_end(), has asked for the end. Heeds what arrived since FLTK last looked
// for events.
bool run_end_requested();
void request_run_end();

// Whatever ends the process from now on, a lost display included, ends the exchange in `area`,
// which must live until then.
void end_exchange_at_exit(IOsharemem_server& area);
