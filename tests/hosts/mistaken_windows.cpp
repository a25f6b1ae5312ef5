// A process that starts another one needs a program for it: the job around all of them is the system's.
void leaveProcessBehind();

void leaveProcessBehind() {}
