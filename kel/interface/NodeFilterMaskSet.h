#pragma once

// The four species masks a dialog's node filter works with; bits as the node species (1 file,
// 2 alias, 4 folder, 8 package, 16 volume, 32 root).
struct NodeFilterMaskSet {
    unsigned long select = 0x3F; // species that may be selected at all
    unsigned long target = 0x3F; // species that may become the browser's target
    unsigned long choose = 0x1F; // species that may be the dialog's result
    unsigned long filter = 0x1F; // species the client's filter callback is asked about

    friend bool operator==(const NodeFilterMaskSet&, const NodeFilterMaskSet&) = default;
};
