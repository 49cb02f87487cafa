#include "corvane.h"

int main(int argc, char** argv) {
    return corvaneProgram(argc, argv);
}
