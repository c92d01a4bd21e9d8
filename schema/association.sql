-- association.sql - the tables of the association registry, /etc/Association.db. The library only reads them, by
-- position: keep the order. Lists are elements separated by commas, the whole in braces: "{Antecedent,Dependent}"; at
-- most 1,023 characters are read. Other texts have at most 256 bytes. Columns without a known meaning bear their
-- number.

-- Association classes, one row each.
CREATE TABLE association (
  ClassName TEXT,    -- CIM class of the association
  NameSpace TEXT,    -- its CIM namespace
  Text2     TEXT,
  Text3     TEXT,
  Flag4     INTEGER,
  List5     TEXT,    -- lists 5 and 6 are a pair: as many elements in both
  List6     TEXT,
  List7     TEXT,    -- and so are lists 7 and 8
  List8     TEXT
);

-- Plug-in registrations, one row each.
CREATE TABLE association_reg (
  RegColumn0 TEXT,
  RegColumn1 TEXT,
  RegColumn2 TEXT,
  RegColumn3 TEXT
);
