insert into utilisateur (login, mot_pase, nom, prenom, role) values
  ('boss', '1', 'Amrani', 'Lila', 'Admin'),
  ('kara', '2', 'Karaoui', 'Nadir', 'KeyUser'),
  ('omar', '3', 'Hadj', 'Omar', 'User');
