#include "basalt/backend/x11/X11SharedImage.h"

#include <cstdlib>
#include <sys/ipc.h>
#include <sys/shm.h>

namespace basalt::x11 {

std::unique_ptr<SharedImage> SharedImage::Create(xcb_connection_t* xcb, int width, int height) {
    const xcb_query_extension_reply_t* shm = xcb_get_extension_data(xcb, &xcb_shm_id);
    if (shm == nullptr || !shm->present)
        return nullptr;
    int stride = cairo_format_stride_for_width(CAIRO_FORMAT_ARGB32, width);
    int id = shmget(IPC_PRIVATE, size_t(stride) * size_t(height), IPC_CREAT | 0600);
    if (id < 0)
        return nullptr;
    void* memory = shmat(id, nullptr, 0);
    if (memory == reinterpret_cast<void*>(-1)) {
        shmctl(id, IPC_RMID, nullptr);
        return nullptr;
    }
    xcb_shm_seg_t segment = xcb_generate_id(xcb);
    xcb_generic_error_t* error =
        xcb_request_check(xcb, xcb_shm_attach_checked(xcb, segment, uint32_t(id), 0));
    // Marked for removal now, the segment goes once both sides have let go of it.
    shmctl(id, IPC_RMID, nullptr);
    if (error != nullptr) {
        std::free(error);
        shmdt(memory);
        return nullptr;
    }
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        static_cast<unsigned char*>(memory), CAIRO_FORMAT_ARGB32, width, height, stride);
    return std::unique_ptr<SharedImage>(new SharedImage(xcb, segment, memory, surface));
}

SharedImage::~SharedImage() {
    cairo_surface_destroy(surface_);
    xcb_shm_detach(xcb_, segment_);
    xcb_flush(xcb_);
    shmdt(memory_);
}

void SharedImage::PutInto(xcb_pixmap_t pixmap, uint8_t depth) {
    cairo_surface_flush(surface_);
    auto width = uint16_t(cairo_image_surface_get_width(surface_));
    auto height = uint16_t(cairo_image_surface_get_height(surface_));
    xcb_gcontext_t gc = xcb_generate_id(xcb_);
    xcb_create_gc(xcb_, gc, pixmap, 0, nullptr);
    xcb_shm_put_image(xcb_, pixmap, gc, width, height, 0, 0, width, height, 0, 0, depth,
                      XCB_IMAGE_FORMAT_Z_PIXMAP, 0, segment_, 0);
    xcb_free_gc(xcb_, gc);
    std::free(xcb_get_input_focus_reply(xcb_, xcb_get_input_focus(xcb_), nullptr));
}

} // namespace basalt::x11
