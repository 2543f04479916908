-- From version 1 to 2: values under numbers, and what the connection does.
PRAGMA user_version = 2;

CREATE TABLE Bookmarks (
  BookmarkId INTEGER PRIMARY KEY NOT NULL,
  Value TEXT NOT NULL
) STRICT;

INSERT INTO Bookmarks (BookmarkId, Value) VALUES
  (8, '1');

INSERT OR IGNORE INTO ClientState (Name, Value) VALUES
  ('ConnectionState', '0'), ('ProxyLocation', '0');
