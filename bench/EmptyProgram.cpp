// Linked with the libraries of VRKClientUI and doing nothing with them: says one byte and waits for the end
// of its input. What it takes to get that far is what the libraries cost by themselves.

#include <unistd.h>

int main() {
    char byte = '.';
    if (write(STDOUT_FILENO, &byte, 1) != 1) return 1;
    while (read(STDIN_FILENO, &byte, 1) > 0) {
    }
    return 0;
}
