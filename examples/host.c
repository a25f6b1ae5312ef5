/* A host in one C file: drives the shared library with an event function of its own.
 *
 * usage: host ENGINE_DIRECTORY FILE...      (the directory with its final separator)
 */
#include <stdio.h>
#include <stdlib.h>

#include "client/capi/zant_c.h"

/* Serves the engine's text and hands every other request back to the engine. */
static void serveEvent(ZantEventData* event) {
    switch (event->kind) {
        case EventCreateTextStream:
            event->handle = stdout;
            break;
        case EventDestroyTextStream:
            break;
        case EventTextLine:
            fprintf(event->handle, "engine: %s", event->text);
            break;
        case EventTextNewLine:
            fputc('\n', event->handle);
            break;
        default:
            ZantInstanceSendBackEvent(event);
    }
}

/* The whole file as one text, to be freed by the caller; null when it cannot be read. */
static char* readFile(const char* name) {
    FILE* file = fopen(name, "rb");
    char* text = NULL;
    long size;
    if (!file) return NULL;
    fseek(file, 0, SEEK_END);
    size = ftell(file);
    rewind(file);
    if (size >= 0) text = malloc((size_t)size + 1);
    if (text) text[fread(text, 1, (size_t)size, file)] = '\0';
    fclose(file);
    return text;
}

static int parseFile(ZantInstance* instance, const char* name) {
    char* text = readFile(name);
    int code;
    if (!text) {
        fprintf(stderr, "host: %s cannot be read\n", name);
        return 1;
    }
    code = ZantInstanceParse(instance, text, name);
    printf("host: %s parsed, code %d\n", name, code);
    free(text);
    return code;
}

/* Declares two values by command and reads them back through their handles. */
static void readValuesBack(ZantInstance* instance) {
    ZantParserExchangeBuffer record = {{0}, ZantValueNumber};
    void* number;
    void* string;
    ZantInstanceParse(instance, "var hostNumber,2.5; string hostText,\"read back\";", "host.c");
    number = ZantInstanceGetObjectByName(instance, "hostNumber", HandleValue);
    string = ZantInstanceGetObjectByName(instance, "hostText", HandleValue);
    ZantInstanceGetSymbolValue(instance, number, &record);
    printf("host: hostNumber is %g, hostText is \"%s\"\n", record.value.number,
           ZantInstanceGetStringSymbolValue(instance, string));
}

int main(int argc, char** argv) {
    ZantInstance* instance;
    int code = 0;
    if (argc < 2) {
        fprintf(stderr, "usage: host ENGINE_DIRECTORY FILE...\n");
        return 2;
    }
    if (!ZantLibraryLoad(argv[1])) {
        fprintf(stderr, "host: no engine in %s\n", argv[1]);
        return 3;
    }
    printf("host: engine version %d, host version %d\n", ZantGetLibApiVersion(), ZantGetHostVersion());
    instance = ZantLibraryCreateInstanceWithEventHandler(serveEvent, NULL);
    if (!instance) {
        fprintf(stderr, "host: the engine refuses an instance\n");
        return 3;
    }
    for (int i = 2; i < argc; ++i)
        code |= parseFile(instance, argv[i]);
    readValuesBack(instance);
    ZantLibraryReleaseInstance(instance);
    ZantLibraryUnload();
    printf("host: engine unloaded, version is now %d\n", ZantGetLibApiVersion());
    return code ? 1 : 0;
}
