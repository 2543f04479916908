-- From version 1 to 2: values under numbers, what the connection does, and ids that are not used again.
PRAGMA user_version = 2;

CREATE TABLE Bookmarks (
  BookmarkId INTEGER PRIMARY KEY NOT NULL,
  Value TEXT NOT NULL
) STRICT;

INSERT INTO Bookmarks (BookmarkId, Value) VALUES
  (8, '1');

INSERT OR IGNORE INTO ClientState (Name, Value) VALUES
  ('ConnectionState', '0'), ('ProxyLocation', '0');

-- Programs that have loaded a profile must not take another one for it: its id is not given to a new one.
CREATE TRIGGER ProfileIdIsNotUsedAgain AFTER DELETE ON Profiles WHEN OLD.ProfileId < 10000
BEGIN
  INSERT INTO ClientState (Name, Value) VALUES ('LastRemovedProfile', CAST(OLD.ProfileId AS TEXT))
    ON CONFLICT (Name) DO UPDATE SET Value = excluded.Value WHERE CAST(Value AS INTEGER) < OLD.ProfileId;
END;
