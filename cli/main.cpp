#include "cli/program.h"

int main(int argc, char** argv) { return zarvo::RunProgram(argc, argv); }
