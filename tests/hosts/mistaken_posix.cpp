#include <unistd.h>

#include <cstdio>

void leaveProcessBehind();

void leaveProcessBehind() {
    if (fork() != 0) return;
    sleep(3);  // under the thread sanitizer the end of the other process takes a second
    std::fclose(std::fopen("left behind", "w"));
    _exit(0);
}
