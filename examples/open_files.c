/*
 * Opens files the way an application does: puts up the open dialog on a folder, waits for the
 * user, and prints each chosen item, one per line, as a path or with -u as a file URL.
 * Exits 0 when something was chosen, 1 on cancel, 2 on an error.
 *
 *   open_files [-u] [FOLDER]
 *   cc -std=c99 open_files.c $(pkg-config --cflags --libs kelservices) -o open_files
 */
#include <basalt/BasaltFiles.h>
#include <kel/KelServices.h>
#include <stdio.h>
#include <string.h>

/* Asks the dialog to start in the folder: a location is a descriptor of a file reference. */
static StatusCode StartIn(KelDialogRef dialog, const char* folder) {
    BFRef ref;
    BEDesc location;
    StatusCode status = BFPathMakeRef((const uint8_t*)folder, &ref, NULL);

    if (status != noErr) {
        return status;
    }
    status = BECreateDesc(typeBFRef, &ref, sizeof ref, &location);
    if (status != noErr) {
        return status;
    }
    status = KelCustomControl(dialog, kKelCtlSetLocation, &location);
    BEDisposeDesc(&location);
    return status;
}

/* The reply's items are file references; the platform turns one into a path... */
static StatusCode PrintPath(const BEDescList* selection, long index) {
    BFRef ref;
    uint8_t path[4096];
    StatusCode status =
        BEGetNthPtr(selection, index, typeBFRef, NULL, NULL, &ref, sizeof ref, NULL);

    if (status == noErr) {
        status = BFRefMakePath(&ref, path, sizeof path);
    }
    if (status == noErr) {
        /* A path is the file system's bytes, which need not be text. */
        fwrite(path, 1, strlen((const char*)path), stdout);
        putchar('\n');
    }
    return status;
}

/* ...or, coerced, into a file URL. */
static StatusCode PrintURL(const BEDescList* selection, long index) {
    BEDesc url;
    char text[8192];
    Size size;
    StatusCode status = BEGetNthDesc(selection, index, typeFileURL, NULL, &url);

    if (status != noErr) {
        return status;
    }
    size = BEGetDescDataSize(&url);
    if (size >= (Size)sizeof text) {
        status = paramErr;
    } else {
        status = BEGetDescData(&url, text, size);
        text[size] = '\0';
        printf("%s\n", text);
    }
    BEDisposeDesc(&url);
    return status;
}

static StatusCode PrintReply(KelDialogRef dialog, int asURLs) {
    KelReplyRecord reply;
    BEDescList selection;
    long count = 0;
    long index;
    StatusCode status = KelDialogGetReply(dialog, &reply);

    if (status != noErr) {
        return status;
    }
    /* The record is packed: its selection is read from an aligned copy. */
    memcpy(&selection, &reply.selection, sizeof selection);
    status = BECountItems(&selection, &count);
    for (index = 1; status == noErr && index <= count; ++index) {
        status = asURLs ? PrintURL(&selection, index) : PrintPath(&selection, index);
    }
    KelDisposeReply(&reply);
    return status;
}

int main(int argc, char** argv) {
    KelDialogCreationOptions options;
    KelDialogRef dialog = NULL;
    int asURLs = argc > 1 && strcmp(argv[1], "-u") == 0;
    const char* folder = argc > 1 + asURLs ? argv[1 + asURLs] : NULL;
    StatusCode status;
    uint32_t action;

    KelGetDefaultDialogCreationOptions(&options);
    /* Remembered sizes, views and folders are kept under this name. */
    options.clientName = BCSTR("Open Files Example");
    options.modality = kKelModalityAppModal;
    status = KelCreateGetFileDialog(&options, NULL, NULL, NULL, NULL, NULL, &dialog);
    if (status == noErr && folder != NULL) {
        status = StartIn(dialog, folder);
    }
    if (status == noErr) {
        status = KelDialogRun(dialog);
    }
    action = dialog != NULL ? KelDialogGetUserAction(dialog) : kKelUserActionNone;
    if (status == noErr && action == kKelUserActionOpen) {
        status = PrintReply(dialog, asURLs);
    }
    if (dialog != NULL) {
        KelDialogDispose(dialog);
    }
    if (status != noErr) {
        fprintf(stderr, "open_files: failed with status %ld\n", (long)status);
        return 2;
    }
    return action == kKelUserActionOpen ? 0 : 1;
}
