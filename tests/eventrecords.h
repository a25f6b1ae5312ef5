#ifndef ZANT_TESTS_EVENTRECORDS_H
#define ZANT_TESTS_EVENTRECORDS_H

// Laid out by the engine; here with something to tell them apart by.
struct _ZantEventWindow {
    int number;
};
struct _ZantEventPixelTable {
    int number;
};
struct _ZantEventPixelRectangle {
    int number;
};

#endif
