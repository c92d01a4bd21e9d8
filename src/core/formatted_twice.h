// Texts that are formatted a second time: some accessors hand an already formatted statement on as a format.
#ifndef QMV_CORE_FORMATTED_TWICE_H
#define QMV_CORE_FORMATTED_TWICE_H

namespace qmv {

// Does to a text, in place, what SQLite's formatter does when there is no argument to take: "%%" becomes "%", a
// directive yields nothing, and the text ends at one that is none. Nothing is read, written through or released for a
// directive.
void format_without_arguments(char* text);

}  // namespace qmv

#endif
