#include "platform/qt/XcbWindowList.h"

#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <memory>

namespace calder {
namespace {

struct Freed {
  void operator()(void* memory) const { std::free(memory); } // NOLINT: xcb hands out malloc'd memory
};

bool Visible(xcb_connection_t* connection, xcb_window_t window) {
  const std::unique_ptr<xcb_get_window_attributes_reply_t, Freed> attributes(
      xcb_get_window_attributes_reply(connection, xcb_get_window_attributes(connection, window), nullptr));
  return attributes != nullptr && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::string PlainName(xcb_connection_t* connection, xcb_window_t window) {
  const std::unique_ptr<xcb_get_property_reply_t, Freed> reply(xcb_get_property_reply(
      connection, xcb_get_property(connection, 0, window, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY, 0, 1024),
      nullptr));
  if (reply == nullptr) return {};
  return {static_cast<const char*>(xcb_get_property_value(reply.get())),
          static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

std::string Caption(xcb_ewmh_connection_t* ewmh, xcb_window_t window) {
  xcb_ewmh_get_utf8_strings_reply_t name{};
  if (xcb_ewmh_get_wm_name_reply(ewmh, xcb_ewmh_get_wm_name(ewmh, window), &name, nullptr) == 0) {
    return PlainName(ewmh->connection, window);
  }
  std::string text(name.strings, name.strings_len);
  xcb_ewmh_get_utf8_strings_reply_wipe(&name);
  return text;
}

// A window manager lists the windows that users know, minimised and on other workspaces too.
std::vector<xcb_window_t> ListedWindows(xcb_ewmh_connection_t* ewmh, int screen) {
  xcb_ewmh_get_windows_reply_t listed{};
  std::vector<xcb_window_t> windows;
  if (xcb_ewmh_get_client_list_reply(ewmh, xcb_ewmh_get_client_list(ewmh, screen), &listed, nullptr) != 0) {
    windows.assign(listed.windows, listed.windows + listed.windows_len);
    xcb_ewmh_get_windows_reply_wipe(&listed);
    return windows;
  }
  // No window manager: those of the root's own children that can be seen.
  const std::unique_ptr<xcb_query_tree_reply_t, Freed> tree(
      xcb_query_tree_reply(ewmh->connection, xcb_query_tree(ewmh->connection, ewmh->screens[screen]->root), nullptr));
  if (tree != nullptr) {
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    std::copy_if(children, children + xcb_query_tree_children_length(tree.get()), std::back_inserter(windows),
                 [&](xcb_window_t window) { return Visible(ewmh->connection, window); });
  }
  return windows;
}

} // namespace

std::vector<std::string> XcbWindowList::Captions() const {
  std::vector<std::string> captions;
  int screen = 0;
  xcb_connection_t* connection = xcb_connect(nullptr, &screen);
  if (xcb_connection_has_error(connection) == 0) {
    xcb_ewmh_connection_t ewmh{};
    if (xcb_ewmh_init_atoms_replies(&ewmh, xcb_ewmh_init_atoms(connection, &ewmh), nullptr) != 0) {
      for (const xcb_window_t window : ListedWindows(&ewmh, screen)) captions.push_back(Caption(&ewmh, window));
      xcb_ewmh_connection_wipe(&ewmh);
    }
  }
  xcb_disconnect(connection);
  return captions;
}

} // namespace calder
