// Texts that are formatted a second time: some accessors hand an already formatted statement on as a format.
#ifndef QMV_CORE_FORMATTED_TWICE_H
#define QMV_CORE_FORMATTED_TWICE_H

namespace qmv {

// Does to a text, in place, what SQLite's formatter does when there is no argument to take: "%%" becomes "%", and the text
// ends at what is no directive. A directive that would take an argument yields nothing: nothing is read, written through
// or released for it. A width before a percent sign, as in "%5%", adds no blanks: it could ask for gigabytes of them.
void format_without_arguments(char* text);

}  // namespace qmv

#endif
