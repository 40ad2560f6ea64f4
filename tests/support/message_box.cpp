// Shows its argument as an operator's message box shows it: what a true box is compared with.
#include <FL/fl_ask.H>

int main(int, char** argv) { fl_message("%s", argv[1]); }
