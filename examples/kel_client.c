/*
 * A small client of the library, in C: it fetches the defaults, makes one dialog of each kind,
 * reads its state, asks for a reply and gives the dialog back, and checks the answers to a few
 * mistakes a client can make. It prints what it does and exits 0 when every answer is the
 * expected one.
 *
 *   cc -std=c99 kel_client.c $(pkg-config --cflags --libs kelservices) -o kel_client
 */
#include <basalt/BasaltCore.h>
#include <kel/KelServices.h>
/* Only needed by clients with windows of their own, such as the parent of a sheet. */
#include <basalt/BasaltToolbox.h>
#include <stdio.h>
#include <string.h>

static int failures = 0;

static void Expect(const char* what, long got, long wanted) {
    if (got != wanted) {
        ++failures;
    }
    printf("%-58s %6ld%s\n", what, got, got == wanted ? "" : "  <-- unexpected");
}

/* Counts the selectors the library sends; a dialog that never shows sends none. */
static void CountEvents(long selector, KelCBRec* record, void* clientData) {
    (void)selector;
    (void)record;
    ++*(int*)clientData;
}

/* Ends an alert from its first idle event, as a client may, and counts what it hears. */
static void EndAtOnce(long selector, KelCBRec* record, void* clientData) {
    ++*(int*)clientData;
    if (selector == kKelCBEvent) {
        KelCustomControl(record->context, kKelCtlTerminate, NULL);
    }
}

/* An ask alert runs modally until the callback ends it, with no user action. */
static void ShowAsk(const char* kind, KelDialogRef dialog) {
    char what[80];

    snprintf(what, sizeof what, "%s: run", kind);
    Expect(what, KelDialogRun(dialog), 0);
    snprintf(what, sizeof what, "%s: user action", kind);
    Expect(what, (long)KelDialogGetUserAction(dialog), kKelUserActionNone);
    KelDialogDispose(dialog);
}

/* A modeless dialog shows and returns at once; the client's message ends it with no action. */
static void ShowDialog(const char* kind, KelDialogRef dialog) {
    KelReplyRecord reply;
    char what[80];

    snprintf(what, sizeof what, "%s: run", kind);
    Expect(what, KelDialogRun(dialog), 0);
    snprintf(what, sizeof what, "%s: has a window", kind);
    Expect(what, KelDialogGetWindow(dialog) != NULL, 1);
    snprintf(what, sizeof what, "%s: end", kind);
    Expect(what, KelCustomControl(dialog, kKelCtlTerminate, NULL), 0);
    snprintf(what, sizeof what, "%s: user action", kind);
    Expect(what, (long)KelDialogGetUserAction(dialog), kKelUserActionNone);
    snprintf(what, sizeof what, "%s: no reply", kind);
    Expect(what, KelDialogGetReply(dialog, &reply), kKelWrongStateErr);
    KelDialogDispose(dialog);
}

int main(void) {
    KelDialogCreationOptions options;
    KelDialogRef dialog = NULL;
    KelReplyRecord reply;
    int events = 0;

    printf("KelServices version 0x%08lx\n", (unsigned long)KelLibraryVersion());
    Expect("defaults", KelGetDefaultDialogCreationOptions(&options), 0);
    Expect("default option flags", (long)options.optionFlags, kKelOptDefaults);
    options.clientName = BCSTR("Example Client");
    options.modality = kKelModalityModeless;

    Expect("create open dialog",
           KelCreateGetFileDialog(&options, NULL, CountEvents, NULL, NULL, &events, &dialog), 0);
    ShowDialog("open", dialog);
    Expect("create save dialog",
           KelCreatePutFileDialog(&options, 0x54455854, 0, CountEvents, &events, &dialog), 0);
    Expect("save dialog: set the name", KelDialogSetSaveFileName(dialog, BCSTR("Untitled")), 0);
    Expect("save dialog: has the name", KelDialogGetSaveFileName(dialog) != NULL, 1);
    /* The save dialog's window is still to come. */
    KelDialogDispose(dialog);
    Expect("create choose file dialog",
           KelCreateChooseFileDialog(&options, NULL, CountEvents, NULL, NULL, &events, &dialog), 0);
    ShowDialog("choose file", dialog);
    Expect("create choose folder dialog",
           KelCreateChooseFolderDialog(&options, CountEvents, NULL, &events, &dialog), 0);
    ShowDialog("choose folder", dialog);
    Expect("create choose volume dialog",
           KelCreateChooseVolumeDialog(&options, CountEvents, NULL, &events, &dialog), 0);
    ShowDialog("choose volume", dialog);
    Expect("create choose object dialog",
           KelCreateChooseObjectDialog(&options, CountEvents, NULL, NULL, &events, &dialog), 0);
    ShowDialog("choose object", dialog);
    Expect("create new folder dialog",
           KelCreateNewFolderDialog(&options, CountEvents, &events, &dialog), 0);
    ShowDialog("new folder", dialog);

    options.modality = kKelModalityAppModal;
    options.saveFileName = BCSTR("Letter");
    Expect("create ask save dialog",
           KelCreateAskSaveChangesDialog(&options, kKelSaveChangesClosing, CountEvents, &events,
                                         &dialog),
           0);
    Expect("ask save: reply is not for this dialog", KelDialogGetReply(dialog, &reply),
           kKelWrongDialogClassErr);
    Expect("ask save: end by call", KelCustomControl(dialog, kKelCtlTerminate, NULL),
           kKelWrongStateErr);
    KelDialogDispose(dialog);
    Expect("browse dialogs heard start, user action and end", events >= 6 * 3, 1);
    events = 0;
    Expect("create ask save dialog",
           KelCreateAskSaveChangesDialog(&options, kKelSaveChangesClosing, EndAtOnce, &events,
                                         &dialog),
           0);
    ShowAsk("ask save", dialog);
    Expect("create ask discard dialog",
           KelCreateAskDiscardChangesDialog(&options, EndAtOnce, &events, &dialog), 0);
    ShowAsk("ask discard", dialog);
    Expect("create ask review dialog",
           KelCreateAskReviewDocumentsDialog(&options, 3, EndAtOnce, &events, &dialog), 0);
    ShowAsk("ask review", dialog);
    Expect("alerts heard start, events, user action and end", events >= 3 * 4, 1);

    /* Mistakes. */
    Expect("defaults into nothing", KelGetDefaultDialogCreationOptions(NULL), paramErr);
    Expect("open dialog without a place to put it",
           KelCreateGetFileDialog(NULL, NULL, NULL, NULL, NULL, NULL, NULL), paramErr);
    options.popupExtension = BCArrayCreate(kBCAllocatorDefault, NULL, 0, &kBCTypeArrayCallBacks);
    Expect("popup items without an event callback",
           KelCreateGetFileDialog(&options, NULL, NULL, NULL, NULL, NULL, &dialog), paramErr);
    BCRelease(options.popupExtension);
    options.popupExtension = NULL;
    options.optionFlags |= kKelOptKeepAliases;
    Expect("save dialog keeping aliases",
           KelCreatePutFileDialog(&options, 0, 0, CountEvents, NULL, &dialog), paramErr);
    options.optionFlags = kKelOptDefaults;
    options.modality = kKelModalitySheet;
    KelCreateGetFileDialog(&options, NULL, CountEvents, NULL, NULL, NULL, &dialog);
    Expect("sheet without a parent window", KelDialogRun(dialog), paramErr);
    KelDialogDispose(dialog);
    options.saveFileName = NULL;
    Expect("ask discard without a document name",
           KelCreateAskDiscardChangesDialog(&options, CountEvents, NULL, &dialog), paramErr);
    Expect("run nothing", KelDialogRun(NULL), paramErr);
    Expect("reply into nothing", KelDisposeReply(NULL), paramErr);
    Expect("translate a file", KelTranslateFile(NULL, NULL, 0, NULL, NULL, 0), -4);

    printf("%s\n", failures == 0 ? "all answers as expected" : "some answers unexpected");
    return failures == 0 ? 0 : 1;
}
