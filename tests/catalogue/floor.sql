insert into utilisateur (login, mot_pase, nom, prenom, role) values ('boss', '1', 'Amrani', 'Lila', 'Admin');
insert into Endroit(ID_endroit, Endoit) values (1, 'Salle'), (4, 'Terrasse');
insert into Table_(ID_table, "table", endroit, id_endroit, etat, control) values
  (1, 'T1', 'Salle', 1, 'OFF', 'open'),
  (2, 'T2', 'Salle', 1, 'OFF', 'open'),
  (3, 'T3', 'Terrasse', 4, 'ON', 'close');
