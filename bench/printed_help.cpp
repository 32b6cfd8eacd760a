// A program that prints what sontaro-cli prints as its help, and does nothing else.
#include <iostream>

int main() {
    std::cout <<
#include "printed_help.inc"
        ;
}
