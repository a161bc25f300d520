/* Needs what nobody has. */
int nobodyHasThis(void);
int unresolvedAnswer(void);
int unresolvedAnswer(void) { return nobodyHasThis(); }
