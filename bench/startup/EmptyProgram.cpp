// The baseline of the start-up benchmark: a C++ program that does nothing.
int main() { return 0; }
