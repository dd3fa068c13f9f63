#ifndef BASALT_BASALTDRAG_H
#define BASALT_BASALTDRAG_H

/* Receiving drags: handlers that a window installs to follow a drag over it and to take the
 * drop, and the calls that read a drag's items and their flavours. Drags come from other
 * programs (files dropped from a file manager); each dropped file is one item whose "furl"
 * flavour holds its file URL in UTF-8. */

#include "basalt/BasaltToolbox.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct OpaqueDragRef* DragRef;
typedef uint32_t DragItemRef;
typedef uint32_t FlavorType;
typedef uint32_t FlavorFlags;
typedef uint32_t DragAttributes;
typedef int16_t DragTrackingMessage;

enum {
    kDragTrackingEnterHandler = 1,
    kDragTrackingEnterWindow = 2,
    kDragTrackingInWindow = 3,
    kDragTrackingLeaveWindow = 4,
    kDragTrackingLeaveHandler = 5
};

enum {
    kDragHasLeftSenderWindow = 1u << 0,
    kDragInsideSenderApplication = 1u << 1,
    kDragInsideSenderWindow = 1u << 2
};

enum { kDragFlavorTypeFileURL = 0x6675726C /* "furl" */ };

enum {
    badDragRefErr = -1850,
    badDragItemErr = -1851,
    badDragFlavorErr = -1852,
    cantGetFlavorErr = -1854,
    duplicateHandlerErr = -1855,
    handlerNotFoundErr = -1856,
    dragNotAcceptedErr = -1857
};

typedef StatusCode (*DragTrackingHandlerUPP)(DragTrackingMessage message, WindowRef theWindow,
                                             void* handlerRefCon, DragRef theDrag);
typedef StatusCode (*DragReceiveHandlerUPP)(WindowRef theWindow, void* handlerRefCon,
                                            DragRef theDrag);

/* A null window installs the handler for every window that has none of its own. */
BASALT_EXPORT StatusCode InstallTrackingHandler(DragTrackingHandlerUPP handler, WindowRef window,
                                                void* refCon);
BASALT_EXPORT StatusCode InstallReceiveHandler(DragReceiveHandlerUPP handler, WindowRef window,
                                               void* refCon);
BASALT_EXPORT StatusCode RemoveTrackingHandler(DragTrackingHandlerUPP handler, WindowRef window);
BASALT_EXPORT StatusCode RemoveReceiveHandler(DragReceiveHandlerUPP handler, WindowRef window);

BASALT_EXPORT StatusCode CountDragItems(DragRef drag, uint16_t* numItems);
/* index counts from 1. */
BASALT_EXPORT StatusCode GetDragItemReferenceNumber(DragRef drag, uint16_t index,
                                                    DragItemRef* item);
BASALT_EXPORT StatusCode GetFlavorFlags(DragRef drag, DragItemRef item, FlavorType type,
                                        FlavorFlags* flags);
BASALT_EXPORT StatusCode GetFlavorDataSize(DragRef drag, DragItemRef item, FlavorType type,
                                           Size* dataSize);
/* Copies at most *dataSize bytes from dataOffset on; *dataSize tells how many came. */
BASALT_EXPORT StatusCode GetFlavorData(DragRef drag, DragItemRef item, FlavorType type,
                                       void* dataPtr, Size* dataSize, uint32_t dataOffset);
BASALT_EXPORT StatusCode GetDragAttributes(DragRef drag, DragAttributes* attributes);
/* The mouse in global coordinates; pinned may be null. */
BASALT_EXPORT StatusCode GetDragMouse(DragRef drag, Point* mouse, Point* globalPinnedMouse);
/* The window shows that it would take the drop; the region is in window coordinates. */
BASALT_EXPORT StatusCode ShowDragHilite(DragRef drag, RgnHandle hiliteFrame, Boolean inside);
BASALT_EXPORT StatusCode HideDragHilite(DragRef drag);

#ifdef __cplusplus
}
#endif

#endif
