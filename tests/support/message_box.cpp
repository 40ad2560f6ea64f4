// Shows a text and, on the button, another as an operator's message box does: what a true box is compared
// with.
#include <FL/fl_ask.H>

int main(int, char** argv) {
  fl_close = argv[2];
  fl_message("%s", argv[1]);
}
