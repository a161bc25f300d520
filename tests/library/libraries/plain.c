/* Knows nothing of the library under test. */
int plainAnswer(void);
int plainAnswer(void) { return 42; }
