/* What the plugin offers. Programs that load it include this for the types of the functions; the functions themselves
 * they get by name, from the loaded library. */
#ifndef PLUGIN_H
#define PLUGIN_H

#define PLUGIN_API __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

/** The sum of both. */
PLUGIN_API int plugin_add(int a, int b);

/** A greeting, which belongs to the plugin and is gone with it. */
PLUGIN_API const char* plugin_greeting(void);

#ifdef __cplusplus
}
#endif

#endif
