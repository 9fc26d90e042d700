// The program of the link checks in tests/core/CMakeLists.txt: its only
// purpose is to be linked.
int main() { return 0; }
