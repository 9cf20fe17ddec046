#include "platform/qt/XcbWindowList.h"

#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>

#include <cstdlib>
#include <memory>
#include <string_view>

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

// The property that every window manager sets on the windows that it manages (ICCCM 4.1.3.1).
bool Managed(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t wmState) {
  const std::unique_ptr<xcb_get_property_reply_t, Freed> reply(xcb_get_property_reply(
      connection, xcb_get_property(connection, 0, window, wmState, XCB_GET_PROPERTY_TYPE_ANY, 0, 0), nullptr));
  return reply != nullptr && reply->type != XCB_ATOM_NONE;
}

std::vector<xcb_window_t> Children(xcb_connection_t* connection, xcb_window_t window) {
  const std::unique_ptr<xcb_query_tree_reply_t, Freed> tree(
      xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
  if (tree == nullptr) return {};
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  return {children, children + xcb_query_tree_children_length(tree.get())};
}

// The program's window in a frame that a window manager has put around it; none: 0.
xcb_window_t ClientIn(xcb_connection_t* connection, xcb_window_t frame, xcb_atom_t wmState, int depth) {
  if (Managed(connection, frame, wmState)) return frame;
  if (depth == 0) return 0;
  for (const xcb_window_t child : Children(connection, frame)) {
    if (const xcb_window_t client = ClientIn(connection, child, wmState, depth - 1)) return client;
  }
  return 0;
}

// Without a list: what can be seen on the root window, inside of frames as well.
void AddClients(xcb_connection_t* connection, xcb_window_t root, std::vector<xcb_window_t>& windows) {
  constexpr int kFrames = 3; // of a window manager, one in the other
  constexpr std::string_view kState = "WM_STATE";
  const std::unique_ptr<xcb_intern_atom_reply_t, Freed> atom(xcb_intern_atom_reply(
      connection, xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(kState.size()), kState.data()), nullptr));
  const xcb_atom_t wmState = atom == nullptr ? 0 : atom->atom; // none: no window manager was ever there
  for (const xcb_window_t window : Children(connection, root)) {
    if (!Visible(connection, window)) continue;
    const xcb_window_t client = wmState == 0 ? 0 : ClientIn(connection, window, wmState, kFrames);
    windows.push_back(client == 0 ? window : client);
  }
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
  AddClients(ewmh->connection, ewmh->screens[screen]->root, windows);
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
