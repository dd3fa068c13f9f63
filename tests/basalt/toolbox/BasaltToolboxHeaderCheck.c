/* A client written in C owns a window, carries a sheet on it and runs its own loop. */
#include <basalt/BasaltToolbox.h>

int BasaltToolboxHeaderCompilesAsC(void);

static StatusCode OnCommand(EventHandlerCallRef call, EventRef event, void* data) {
    BTCommand command;
    (void)call;
    (void)data;
    GetEventParameter(event, kEventParamDirectObject, typeBTCommand, NULL, sizeof command, NULL,
                      &command);
    if (command.commandID == kBTCommandOK)
        QuitApplicationEventLoop();
    return noErr;
}

int BasaltToolboxHeaderCompilesAsC(void) {
    Rect bounds = {100, 100, 300, 400};
    WindowRef window = NULL;
    EventTypeSpec commands = {kEventClassCommand, kEventCommandProcess};
    if (CreateNewWindow(kDocumentWindowClass, kWindowStandardDocumentAttributes, &bounds,
                        &window) != noErr)
        return 0;
    InstallEventHandler(GetWindowEventTarget(window), OnCommand, 1, &commands, NULL, NULL);
    DisposeWindow(window);
    return 1;
}
