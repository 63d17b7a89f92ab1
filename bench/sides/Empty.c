/* What a process costs that does nothing. */
int main(void) { return 0; }
