/* Knows nothing of the library under test. Its answer may be one that nobody has. */
int nobodyHasThis(void);
int answer(void) { return ANSWER; }
